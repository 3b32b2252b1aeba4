#include "object_packer.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

#include "core/fpdfapi/parser/cpdf_array.h"
#include "core/fpdfapi/parser/cpdf_cross_ref_table.h"
#include "core/fpdfapi/parser/cpdf_crypto_handler.h"
#include "core/fpdfapi/parser/cpdf_dictionary.h"
#include "core/fpdfapi/parser/cpdf_document.h"
#include "core/fpdfapi/parser/cpdf_encryptor.h"
#include "core/fpdfapi/parser/cpdf_object.h"
#include "core/fpdfapi/parser/cpdf_parser.h"
#include "core/fpdfapi/parser/cpdf_stream.h"
#include "core/fpdfapi/parser/fpdf_parser_utility.h"
#include "core/fxcodec/flate/flatemodule.h"
#include "core/fxcrt/data_vector.h"
#include "core/fxcrt/fx_stream.h"
#include "core/fxcrt/span.h"

namespace {

// A reader unpacks a whole object stream for one object of it.
constexpr uint32_t kMostObjects = 200;
constexpr size_t kMostBytes = 16 * 1024;

constexpr uint8_t kFree = 0;
constexpr uint8_t kOnItsOwn = 1;
constexpr uint8_t kPacked = 2;
constexpr size_t kIndexBytes = 2;
constexpr size_t kMostRowBytes = 1 + sizeof(uint64_t) + kIndexBytes;
constexpr uint32_t kNeverUsedAgain = 0xFFFF;  // in place of the index, for free objects
constexpr uint8_t kUpPredictor = 2;

// An archive in memory.
class TextArchive final : public IFX_ArchiveStream {
 public:
  explicit TextArchive(std::string& text) : text_(text) {}
  bool WriteBlock(pdfium::span<const uint8_t> data) override {
    text_.append(reinterpret_cast<const char*>(data.data()), data.size());
    return true;
  }
  FX_FILESIZE CurrentOffset() const override { return static_cast<FX_FILESIZE>(text_.size()); }

 private:
  std::string& text_;
};

pdfium::span<const uint8_t> BytesOf(const std::string& text) {
  return pdfium::as_bytes(pdfium::span(text.data(), text.size()));
}

bool Write(IFX_ArchiveStream& archive, const std::string& text) {
  return archive.WriteBlock(BytesOf(text));
}

// Whether an object was packed in the source, or is new.
bool IsPackedOrNew(const CPDF_Parser& parser, uint32_t number) {
  using Type = CPDF_CrossRefTable::ObjectType;
  const auto* place = parser.GetCrossRefTableForTesting()->GetObjectInfo(number);
  return !place || place->type == Type::kCompressed || place->type == Type::kFree;
}

// The rows of a cross-reference stream.
class Rows {
 public:
  explicit Rows(uint64_t highest) {
    while (highest >> (8 * value_bytes_) != 0) {
      ++value_bytes_;
    }
  }

  size_t value_bytes() const { return value_bytes_; }
  size_t row_bytes() const { return 1 + value_bytes_ + kIndexBytes; }

  // The row of object |number|, which is higher than those before; numbers left out are free.
  void Add(uint32_t number, uint8_t type, uint64_t value, uint32_t index) {
    while (next_ < number) {
      AddNext(kFree, 0, kNeverUsedAgain);
    }
    AddNext(type, value, index);
  }

  DataVector<uint8_t> Compressed() const { return FlateModule::Encode(BytesOf(bytes_)); }

 private:
  void AddNext(uint8_t type, uint64_t value, uint32_t index) {
    ++next_;
    std::array<uint8_t, kMostRowBytes> row = {type};
    PutBigEndian(row, 1, value, value_bytes_);
    PutBigEndian(row, 1 + value_bytes_, index, kIndexBytes);
    bytes_ += static_cast<char>(kUpPredictor);
    for (size_t i = 0; i < row_bytes(); ++i) {
      bytes_ += static_cast<char>(row[i] - before_[i]);
    }
    before_ = row;
  }

  static void PutBigEndian(std::array<uint8_t, kMostRowBytes>& row, size_t start, uint64_t value, size_t bytes) {
    for (size_t i = 0; i < bytes; ++i) {
      row[start + i] = static_cast<uint8_t>(value >> (8 * (bytes - 1 - i)));
    }
  }

  size_t value_bytes_ = 1;
  uint32_t next_ = 0;
  std::array<uint8_t, kMostRowBytes> before_ = {};
  std::string bytes_;
};

}  // namespace

// static
std::unique_ptr<ObjectPacker> ObjectPacker::For(const CPDF_Document& document) {
  const CPDF_Parser* parser = document.GetParser();
  if (!parser || !parser->IsXRefStream() || parser->xref_table_rebuilt() ||
      parser->GetTrailer()->KeyExist("XRefStm")) {
    return nullptr;
  }
  const auto& places = parser->GetCrossRefTableForTesting()->objects_info();
  const bool any = std::ranges::any_of(places, [](const auto& entry) {
    return entry.second.type == CPDF_CrossRefTable::ObjectType::kCompressed;
  });
  return any ? std::make_unique<ObjectPacker>(document) : nullptr;
}

ObjectPacker::ObjectPacker(const CPDF_Document& document)
    : document_(document), last_number_(document.GetLastObjNum()) {}

bool ObjectPacker::Takes(uint32_t number,
                         const CPDF_Object& object,
                         bool encrypted,
                         const CPDF_Object* encryption) const {
  if (object.IsStream() || &object == encryption) {
    return false;
  }
  if (CPDF_CryptoHandler::IsSignatureDictionary(object.AsDictionary())) {
    return false;
  }
  if (encrypted && &object == document_.GetRoot()) {
    return false;
  }
  return IsPackedOrNew(*document_.GetParser(), number);
}

bool ObjectPacker::Add(uint32_t number,
                       const CPDF_Object& object,
                       IFX_ArchiveStream& archive,
                       const CPDF_CryptoHandler* cipher) {
  if (count_ == 0) {
    ++last_number_;
  }
  heads_ += std::to_string(number);
  heads_ += ' ';
  heads_ += std::to_string(bodies_.size());
  heads_ += ' ';
  TextArchive body(bodies_);
  if (!object.WriteTo(&body, nullptr)) {
    return false;
  }
  bodies_ += '\n';
  packed_.push_back({number, last_number_, count_++});
  return (count_ < kMostObjects && bodies_.size() < kMostBytes) || WriteObjectStream(archive, cipher);
}

bool ObjectPacker::Finish(IFX_ArchiveStream& archive, const CPDF_CryptoHandler* cipher) {
  std::ranges::sort(packed_, {}, &Packed::number);
  return count_ == 0 || WriteObjectStream(archive, cipher);
}

bool ObjectPacker::WriteObjectStream(IFX_ArchiveStream& archive, const CPDF_CryptoHandler* cipher) {
  DataVector<uint8_t> data = FlateModule::Encode(BytesOf(heads_ + bodies_));
  if (cipher) {
    data = CPDF_Encryptor(cipher, static_cast<int>(last_number_)).Encrypt(data);
  }
  streams_[last_number_] = archive.CurrentOffset();
  const std::string start = std::to_string(last_number_) + " 0 obj\r\n<</Type/ObjStm/N " + std::to_string(count_) +
                            "/First " + std::to_string(heads_.size()) + "/Filter/FlateDecode/Length " +
                            std::to_string(data.size()) + ">>stream\r\n";
  heads_.clear();
  bodies_.clear();
  count_ = 0;
  return Write(archive, start) && archive.WriteBlock(data) &&
         Write(archive, "\r\nendstream\r\nendobj\r\n");
}

// Those that describe the cross-reference stream itself are not the source's.
std::string ObjectPacker::TrailerEntries(uint32_t encryption, const CPDF_Array* identifier) const {
  static constexpr std::string_view kOwn[] = {"DecodeParms", "Encrypt", "Filter", "ID",   "Index", "Length",
                                              "Prev",        "Size",    "Type",   "W",    "XRefStm"};
  std::string entries;
  TextArchive archive(entries);
  RetainPtr<const CPDF_Dictionary> trailer = document_.GetParser()->GetCombinedTrailer();
  CPDF_DictionaryLocker locker(trailer);
  for (const auto& [key, value] : locker) {
    if (std::ranges::find(kOwn, std::string_view(key.c_str())) == std::end(kOwn)) {
      entries += "/";
      archive.WriteString(PDF_NameEncode(key).AsStringView());
      value->WriteTo(&archive, nullptr);
    }
  }
  if (encryption != 0) {
    entries += "/Encrypt " + std::to_string(encryption) + " 0 R";
  }
  if (identifier) {
    entries += "/ID";
    identifier->WriteTo(&archive, nullptr);
  }
  return entries;
}

bool ObjectPacker::WriteCrossReferences(IFX_ArchiveStream& archive,
                                        uint32_t number,
                                        const std::map<uint32_t, FX_FILESIZE>& offsets,
                                        uint32_t encryption,
                                        const CPDF_Array* identifier) const {
  const FX_FILESIZE start = archive.CurrentOffset();
  std::map<uint32_t, FX_FILESIZE> places = offsets;
  places.insert(streams_.begin(), streams_.end());
  places[number] = start;

  Rows rows(std::max<uint64_t>(static_cast<uint64_t>(start), number));
  rows.Add(0, kFree, 0, kNeverUsedAgain);
  auto packed = packed_.begin();
  for (auto place = places.upper_bound(0); place != places.end(); ++place) {
    // PDFium notes an offset for every object, those that were packed included.
    while (packed != packed_.end() && packed->number < place->first) {
      ++packed;
    }
    if (packed != packed_.end() && packed->number == place->first) {
      rows.Add(packed->number, kPacked, packed->stream, packed->index);
      ++packed;
    } else {
      rows.Add(place->first, kOnItsOwn, static_cast<uint64_t>(place->second), 0);
    }
  }

  const DataVector<uint8_t> data = rows.Compressed();
  const std::string head = std::to_string(number) + " 0 obj\r\n<</Type/XRef/Size " + std::to_string(number + 1) +
                           "/W[1 " + std::to_string(rows.value_bytes()) + " " + std::to_string(kIndexBytes) +
                           "]/Filter/FlateDecode/DecodeParms<</Predictor 12/Columns " +
                           std::to_string(rows.row_bytes()) + ">>/Length " + std::to_string(data.size());
  return Write(archive, head + TrailerEntries(encryption, identifier) + ">>stream\r\n") && archive.WriteBlock(data) &&
         Write(archive, "\r\nendstream\r\nendobj\r\nstartxref\r\n" + std::to_string(start) + "\r\n%%EOF\r\n");
}
