/// @file
/// What must hold of every copy of a reply that tells nobody whose it was.

#ifndef KOVRA_TESTS_SUPPORT_REDACTED_HPP
#define KOVRA_TESTS_SUPPORT_REDACTED_HPP

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "command.hpp"
#include "identity.hpp"
#include "pseudonyms.hpp"
#include "survey.hpp"
#include "tags.hpp"

namespace Kovra::test {

/// Is it made of letters, digits and dashes, and too long to come about by chance?
inline bool isUnmistakable(std::string_view value) {
  constexpr std::size_t shortest = 8;
  return value.size() >= shortest && std::all_of(value.begin(), value.end(), [](char byte) {
           char const low = static_cast<char>(byte | 0x20);
           return (low >= 'a' && low <= 'z') || (byte >= '0' && byte <= '9') || byte == '-';
         });
}

/// Is everything as it was that is no piece, or a piece that has to stay?
inline bool isSameAround(std::string_view text, std::vector<tool::Piece> const& pieces,
                         std::string_view copy, std::vector<tool::Piece> const& copied) {
  if (pieces.size() != copied.size()) return false;
  std::size_t at = 0;
  std::size_t copiedAt = 0;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    tool::Span const& old = pieces[i].span;
    tool::Span const& now = copied[i].span;
    if (old.begin < at || old.end < old.begin) return false;
    if (text.substr(at, old.begin - at) != copy.substr(copiedAt, now.begin - copiedAt))
      return false;
    if (pieces[i].isFixed && old.of(text) != now.of(copy)) return false;
    at = old.end;
    copiedAt = now.end;
  }
  return text.substr(at) == copy.substr(copiedAt);
}

/// Does the value stand where it could have been replaced?
inline bool survives(std::string_view value, std::string_view copy,
                     std::vector<tool::Piece> const& copied) {
  return std::any_of(copied.begin(), copied.end(), [&](tool::Piece const& piece) {
    return !piece.isFixed && piece.span.of(copy).find(value) != copy.npos;
  });
}

/// What is wrong with the copy of a text; nothing where all is well.
inline std::string faultOfCopy(std::string_view text, std::vector<tool::Piece> const& pieces,
                               tool::Pseudonyms const& pseudonyms, std::string_view copy,
                               std::vector<tool::Piece> const& copied) {
  if (!isSameAround(text, pieces, copy, copied)) return "more is changed than values";
  auto const isMadeUp = [&](std::string_view value) {
    return std::any_of(pseudonyms.all().begin(), pseudonyms.all().end(), [&](auto const& other) {
      return other.madeUp.find(value) != other.madeUp.npos;
    });
  };
  for (tool::Pseudonym const& pseudonym : pseudonyms.all()) {
    if (pseudonym.madeUp.empty()) return "nothing in place of a value";
    bool const isLeft = isUnmistakable(pseudonym.original) && !isMadeUp(pseudonym.original) &&
                        survives(pseudonym.original, copy, copied);
    if (isLeft) return pseudonym.original + " survives";
  }
  return {};
}

/// Copies a reply that can be decoded, and the copy again. What is wrong with that; nothing where
/// all is well, also for a reply that cannot be copied.
inline std::string faultOfRedaction(std::string_view bytes,
                                    tool::Identities const& identities) try {
  tool::ReplyText const reply(bytes);
  std::string text = reply.text();
  if (reply.bytesOf(text) != bytes) return "the bytes are not the same";
  std::vector<tool::Piece> pieces = tool::piecesOf(text, identities);
  if (tool::redacted(text, pieces, {}).text != text) return "a copy without values is another";
  for (int time = 0; time < 2; ++time) {
    tool::Pseudonyms pseudonyms;
    tool::collect(text, pieces, pseudonyms);
    pseudonyms.makeUp();
    tool::Redacted const copy = tool::redacted(text, pieces, pseudonyms);
    std::vector<tool::Piece> copied = tool::piecesOf(copy.text, identities);
    std::string fault = faultOfCopy(text, pieces, pseudonyms, copy.text, copied);
    if (!fault.empty()) return fault + (time == 0 ? "" : " the second time");
    text = copy.text;
    pieces = std::move(copied);
  }
  return {};
} catch (tool::TagError const&) {
  return {};
} catch (tool::InputFailure const&) {
  return {};
}

}  // namespace Kovra::test

#endif
