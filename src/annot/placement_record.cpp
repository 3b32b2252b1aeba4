#include "annot/placement_record.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>

#include "annot/placement_fonts.h"
#include "base/text_format.h"
#include "session/app_settings.h"

namespace quillmere {

namespace {

constexpr std::u16string_view kMagic = u"QMR1;";
constexpr std::size_t kFormAt = kMagic.size();
constexpr std::size_t kFieldsAt = kFormAt + 2;
constexpr char16_t kStampForm = u'S';
constexpr char16_t kTextForm = u'T';
constexpr auto kColors = static_cast<std::int32_t>(std::tuple_size_v<TextColorTable>);

// Adding zero takes the sign from minus zero.
std::u16string field(double value) {
  return sixDigits(value + 0.0) + u";";
}

std::u16string field(std::int32_t value) {
  return decimal(value) + u";";
}

// The fields of a record, from the left.
class Fields {
 public:
  explicit Fields(std::u16string_view rest) : rest_(rest) {}

  // Nullopt when no semicolon ends the next field. What follows a unit that is not ASCII is left
  // out.
  std::optional<std::string> next() {
    const std::size_t end = rest_.find(u';');
    if (end == std::u16string_view::npos) return std::nullopt;
    std::string digits;
    for (const char16_t unit : rest_.substr(0, end)) {
      if (unit == 0 || unit > 0x7F) break;
      digits += static_cast<char>(unit);
    }
    rest_.remove_prefix(end + 1);
    return digits;
  }

  std::u16string_view rest() const { return rest_; }

 private:
  std::u16string_view rest_;
};

// Text that is no number counts as 0.
bool readNumber(Fields& fields, double& value) {
  const std::optional<std::string> digits = fields.next();
  if (!digits) return false;
  value = std::strtod(digits->c_str(), nullptr);
  return std::isfinite(value);
}

bool readInteger(Fields& fields, std::int32_t& value) {
  const std::optional<std::string> digits = fields.next();
  if (!digits) return false;
  using Limits = std::numeric_limits<std::int32_t>;
  const long long number = std::strtoll(digits->c_str(), nullptr, 10);
  value = static_cast<std::int32_t>(std::clamp(number, static_cast<long long>(Limits::min()),
                                               static_cast<long long>(Limits::max())));
  return true;
}

bool readBox(Fields& fields, Placement& read) {
  for (double* number : {&read.rotation, &read.x, &read.y, &read.width, &read.height}) {
    if (!readNumber(fields, *number)) return false;
  }
  for (double* place : {&read.x, &read.y}) {
    *place = std::clamp(*place, -kFarthestPlace, kFarthestPlace);
  }
  for (double* side : {&read.width, &read.height}) *side = std::clamp(*side, 0.0, kFarthestPlace);
  return true;
}

std::int32_t rowOrFirst(std::int32_t row, std::int32_t rows) {
  return row >= 0 && row < rows ? row : 0;
}

bool readText(Fields& fields, Placement& read) {
  for (std::int32_t* number : {&read.fontSize, &read.fontIndex, &read.colorIndex}) {
    if (!readInteger(fields, *number)) return false;
  }
  read.fontSize = std::clamp(read.fontSize, kLeastFontSize, kLargestFontSize);
  read.fontIndex = rowOrFirst(read.fontIndex, kPlacementFonts);
  read.colorIndex = rowOrFirst(read.colorIndex, kColors);
  read.text = fields.rest();
  return true;
}

}  // namespace

std::u16string FormatPlacementRecord(const Placement& placement) {
  const bool isText = placement.kind == PlacementKind::TextDrop;
  std::u16string record(kMagic);
  record += isText ? kTextForm : kStampForm;
  record += u';';
  record += field(placement.rotation) + field(placement.x) + field(placement.y) +
            field(placement.width) + field(placement.height);
  if (!isText) return record;
  return record + field(placement.fontSize) + field(placement.fontIndex) +
         field(placement.colorIndex) + placement.text;
}

bool ParsePlacementRecord(std::u16string_view text, Placement& placement) {
  if (!text.starts_with(kMagic) || text.size() < kFieldsAt || text[kFormAt + 1] != u';') {
    return false;
  }
  const char16_t form = text[kFormAt];
  if (form != kStampForm && form != kTextForm) return false;
  Placement read;
  Fields fields(text.substr(kFieldsAt));
  if (!readBox(fields, read)) return false;
  if (form == kTextForm) {
    read.kind = PlacementKind::TextDrop;
    if (!readText(fields, read)) return false;
  } else {
    read.stampIndex = -1;
  }
  placement = std::move(read);
  return true;
}

}  // namespace quillmere
