#include "strict_xml.hpp"

#include <expat.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>

namespace Kovra::tool {

namespace {

struct FreeParser {
  void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using Parser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, FreeParser>;

/// What an entity stands for may be a file, or a million others.
void stopAtEntity(void* parser, XML_Char const*, int, XML_Char const*, int, XML_Char const*,
                  XML_Char const*, XML_Char const*, XML_Char const*) {
  XML_StopParser(static_cast<XML_Parser>(parser), XML_FALSE);
}

Parser newParser() {
  Parser parser(XML_ParserCreate(nullptr));
  if (!parser) throw std::bad_alloc();
  XML_SetParamEntityParsing(parser.get(), XML_PARAM_ENTITY_PARSING_NEVER);
  XML_SetEntityDeclHandler(parser.get(), stopAtEntity);
  XML_UseParserAsHandlerArg(parser.get());
  return parser;
}

std::string messageOf(XML_Error error) {
  if (error == XML_ERROR_ABORTED) return "an entity is declared, which Kovra does not expand";
  XML_LChar const* const said = XML_ErrorString(error);
  return said != nullptr ? said : "no well-formed XML";
}

bool hasByteOrderMark(std::string_view text) {
  return text.starts_with("\xef\xbb\xbf") || text.starts_with("\xff\xfe") ||
         text.starts_with("\xfe\xff");
}

/// It counts columns from 0, and a byte order mark as one.
int columnOf(XML_Parser parser, std::string_view text) {
  bool const isMarked = XML_GetCurrentLineNumber(parser) == 1 && hasByteOrderMark(text);
  return static_cast<int>(XML_GetCurrentColumnNumber(parser)) + (isMarked ? 0 : 1);
}

}  // namespace

std::optional<StrictFault> strictFault(std::string_view text) {
  constexpr auto longest = static_cast<std::size_t>(std::numeric_limits<int>::max());
  if (text.size() > longest) return std::nullopt;  // which the library refuses anyway
  Parser const parser = newParser();
  int const length = static_cast<int>(text.size());
  if (XML_Parse(parser.get(), text.data(), length, XML_TRUE) == XML_STATUS_OK) return std::nullopt;
  XML_Error const error = XML_GetErrorCode(parser.get());
  if (error == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
  StrictFault fault;
  fault.line = static_cast<int>(XML_GetCurrentLineNumber(parser.get()));
  fault.column = columnOf(parser.get(), text);
  // Of an empty text some releases of libexpat know no place.
  fault.offset =
      static_cast<std::size_t>(std::max<XML_Index>(0, XML_GetCurrentByteIndex(parser.get())));
  fault.message = messageOf(error);
  return fault;
}

}  // namespace Kovra::tool
