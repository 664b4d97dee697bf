/// @file
/// What the face's results hold. Hosts see none of it, so that it may grow.

#ifndef KOVRA_FACE_RESULTS_HPP
#define KOVRA_FACE_RESULTS_HPP

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "face/findings.hpp"
#include "face/growth.hpp"
#include "frame/message.hpp"
#include "frame/observer.hpp"
#include "frame/problems.hpp"
#include "frame/wipe.hpp"
#include "kovra.hpp"

namespace Kovra::detail {

struct ReadingData : Growth {
  frame::MessageRow const* message = nullptr;
  bool result = false;
  Value record;
};

struct DecodingData : Growth {
  std::vector<ReadingData> readings;
  std::vector<FindingData> notes;
  std::optional<FindingData> refusal;
  std::string_view knownRoot;  ///< a word of the tables; empty where the root is
  std::string root;            ///< one that no table has
};

struct ReplyData : Growth {
  frame::MessageRow const* message = nullptr;
  std::optional<frame::AnyRecord> record;
  bool result = false;
  frame::Trail said;
  std::vector<FindingData> notes;
  std::unique_ptr<FindingData> refusal;  ///< apart, so that all of a good reply is one small block
};

struct ProblemData : Growth, frame::Trouble {};

struct CompositionData : Growth {
  CompositionData() = default;
  CompositionData(CompositionData const&) = delete;
  CompositionData& operator=(CompositionData const&) = delete;
  ~CompositionData() { frame::wipe(text.data(), text.size()); }

  bool isComposed = false;
  std::string text;
  std::vector<ProblemData> problems;
};

struct MemberData : Growth {
  std::string name;
  Value::Kind kind = Value::Kind::nothing;
  std::string title;
  bool isSecret = false;
  std::vector<std::string> elements;
  std::vector<frame::Row const*> rows;  ///< one that reads it, one that writes it
};

/// What one row tells of its member.
MemberData memberOf(frame::Row const& row);

struct ElementData : Growth {
  std::string name;
  std::vector<MemberData> members;
  std::vector<frame::Word const*> words;
  std::vector<std::string> attributes;
  std::size_t most = 1;
  std::vector<ElementData> elements;
};

/// Puts data into the classes that hosts see.
struct FaceAccess {
  template <class Face, class Data>
  static Face make(Data data) {
    Face face;
    face.data_ = std::move(data);
    return face;
  }
  template <class Face>
  static auto const& data(Face const& face) {
    return face.data_;
  }

  /// One for each of what `owner` holds, and holds on to it.
  template <class Face, class Owner, class Data>
  static std::vector<Face> each(Shared<Owner> const& owner, std::vector<Data> const& all) {
    std::vector<Face> faces;
    faces.reserve(all.size());
    for (Data const& data : all) faces.push_back(make<Face>(Shared<Data>(owner, &data)));
    return faces;
  }
};

}  // namespace Kovra::detail

#endif
