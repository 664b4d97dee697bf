#include "face/results.hpp"

namespace Kovra {

using detail::FaceAccess;
using detail::FindingData;
using detail::Shared;

namespace {

/// What a result without data holds.
template <class Data>
Data const& dataOf(Shared<Data> const& data) {
  static Data const nothing{};
  return data != nullptr ? *data : nothing;
}

/// Why there is nothing else in it, if it was refused.
template <class Data>
Refusal refusalIn(Shared<Data> const& data) {
  if (data == nullptr || !data->refusal) return {};
  return FaceAccess::make<Refusal>(Shared<FindingData>(data, &*data->refusal));
}

}  // namespace

std::string_view nameOf(Value::Kind kind) {
  switch (kind) {
    case Value::Kind::nothing:
      break;
    case Value::Kind::flag:
      return "flag";
    case Value::Kind::integer:
      return "integer";
    case Value::Kind::natural:
      return "natural";
    case Value::Kind::real:
      return "real";
    case Value::Kind::text:
      return "text";
    case Value::Kind::keyword:
      return "keyword";
    case Value::Kind::list:
      return "list";
    case Value::Kind::record:
      return "record";
  }
  return "nothing";
}

std::string_view nameOf(Choice::Form form) {
  switch (form) {
    case Choice::Form::flag:
      return "flag";
    case Choice::Form::word:
      return "word";
    case Choice::Form::words:
      return "words";
    case Choice::Form::number:
      return "number";
  }
  return {};
}

std::string_view nameOf(MemberDescription::Form form) {
  switch (form) {
    case MemberDescription::Form::plain:
      return "plain";
    case MemberDescription::Form::setting:
      return "setting";
    case MemberDescription::Form::ipv4:
      return "ipv4";
    case MemberDescription::Form::hardwareAddress:
      return "hardware_address";
    case MemberDescription::Form::hexadecimal:
      return "hexadecimal";
  }
  return {};
}

std::string_view nameOf(Severity severity) {
  switch (severity) {
    case Severity::information:
      return "information";
    case Severity::warning:
      return "warning";
    case Severity::error:
      return "error";
  }
  return {};
}

// Findings.

Finding::Finding() noexcept = default;
Finding::Finding(Finding const&) noexcept = default;
Finding::Finding(Finding&&) noexcept = default;
Finding& Finding::operator=(Finding const&) noexcept = default;
Finding& Finding::operator=(Finding&&) noexcept = default;
Finding::~Finding() = default;

std::string Finding::id() const {
  FindingData const& data = dataOf(data_);
  return data.kind != nullptr ? data.kind->id : "";
}

Severity Finding::severity() const {
  FindingData const& data = dataOf(data_);
  return data.kind != nullptr ? data.kind->severity : Severity::information;
}

int Finding::line() const {
  return dataOf(data_).begin.line;
}
int Finding::column() const {
  return dataOf(data_).begin.column;
}
std::size_t Finding::offset() const {
  return dataOf(data_).begin.offset;
}
int Finding::endLine() const {
  return dataOf(data_).end.line;
}
int Finding::endColumn() const {
  return dataOf(data_).end.column;
}
std::size_t Finding::endOffset() const {
  return dataOf(data_).end.offset;
}
std::string Finding::path() const {
  return dataOf(data_).path;
}
std::string Finding::element() const {
  return dataOf(data_).element;
}
std::string Finding::found() const {
  return dataOf(data_).found;
}
std::string Finding::kept() const {
  return dataOf(data_).kept;
}
std::vector<std::string> Finding::expected() const {
  return dataOf(data_).expected;
}
std::size_t Finding::count() const {
  return dataOf(data_).count;
}
std::string Finding::message() const {
  return dataOf(data_).sentence();
}

Refusal::operator bool() const {
  return !id().empty();
}

std::string FindingKind::id() const {
  return data_->id;
}
Severity FindingKind::severity() const {
  return data_->severity;
}
std::string FindingKind::name() const {
  return data_->name;
}
std::string FindingKind::title() const {
  return data_->title;
}
std::string FindingKind::explanation() const {
  return data_->explanation;
}
std::string FindingKind::example() const {
  return data_->example();
}
std::string FindingKind::exampleAs() const {
  return std::string(data_->exampleAs);
}
ReadOptions FindingKind::exampleOptions() const {
  return ReadOptions().skipTextBefore(data_->exampleSkips);
}

std::vector<FindingKind> findingKinds() {
  std::vector<FindingKind> all;
  for (detail::FindingKindData const& kind : detail::allFindingKinds()) {
    all.push_back(FaceAccess::make<FindingKind>(&kind));
  }
  return all;
}

// Replies.

Reading::Reading() noexcept = default;

std::string Reading::message() const {
  frame::MessageRow const* const message = dataOf(data_).message;
  return message != nullptr ? std::string(message->name) : "";
}

bool Reading::result() const {
  return dataOf(data_).result;
}

Value const& Reading::record() const {
  return dataOf(data_).record;
}

Decoding::Decoding() noexcept = default;

Decoding::operator bool() const {
  return data_ != nullptr && !data_->refusal;
}

std::vector<Reading> Decoding::readings() const {
  return FaceAccess::each<Reading>(data_, dataOf(data_).readings);
}

std::vector<Note> Decoding::notes() const {
  return FaceAccess::each<Note>(data_, dataOf(data_).notes);
}

Refusal Decoding::refusal() const {
  return refusalIn(data_);
}

std::string Decoding::root() const {
  detail::DecodingData const& data = dataOf(data_);
  return data.root.empty() ? std::string(data.knownRoot) : data.root;
}

namespace detail {

AnyReply::AnyReply() noexcept = default;

bool AnyReply::isThere() const {
  return data_ != nullptr && !data_->refusal;
}

void const* AnyReply::record() const {
  return data_ != nullptr && data_->record ? data_->record->get() : nullptr;
}

bool AnyReply::has(std::string_view path) const {
  return data_ != nullptr && data_->said.has(path);
}

bool AnyReply::result() const {
  return data_ != nullptr && data_->result;
}

std::string AnyReply::message() const {
  return isThere() ? std::string(data_->message->name) : "";
}

std::vector<Note> AnyReply::notes() const {
  if (data_ == nullptr) return {};
  return FaceAccess::each<Note>(data_, data_->notes);
}

Refusal AnyReply::refusal() const {
  return refusalIn(data_);
}

}  // namespace detail

// Documents.

Problem::Problem() noexcept = default;

std::string Problem::path() const {
  return dataOf(data_).path;
}
std::string Problem::found() const {
  return dataOf(data_).found;
}
std::string Problem::expected() const {
  return dataOf(data_).expected;
}
std::string Problem::message() const {
  if (data_ == nullptr) return {};
  std::string const where = data_->path.empty() ? "" : data_->path + ": ";
  return where + "found " + data_->found + "; expected " + data_->expected;
}

Composition::Composition() noexcept = default;

Composition::operator bool() const {
  return data_ != nullptr && data_->isComposed;
}

std::string const& Composition::text() const {
  return dataOf(data_).text;
}

std::vector<Problem> Composition::problems() const {
  return FaceAccess::each<Problem>(data_, dataOf(data_).problems);
}

}  // namespace Kovra
