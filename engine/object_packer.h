#ifndef QUILLMERE_OBJECT_PACKER_H_
#define QUILLMERE_OBJECT_PACKER_H_

#include <stddef.h>
#include <stdint.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/fxcrt/fx_types.h"

class CPDF_Array;
class CPDF_CryptoHandler;
class CPDF_Document;
class CPDF_Object;
class IFX_ArchiveStream;

// Keeps packed what the source of a document has packed. PDFium writes every object by itself, which
// doubles the size of a manual. Objects that are no streams gather in an object stream until that is
// full; the places of all objects are a cross-reference stream at the end.
class ObjectPacker {
 public:
  // Null for a document that is to be written unpacked: one whose source has no packed objects, can
  // also be read without them, or was repaired.
  static std::unique_ptr<ObjectPacker> For(const CPDF_Document& document);

  // Object streams get the numbers behind those of |document|.
  explicit ObjectPacker(const CPDF_Document& document);
  ObjectPacker(const ObjectPacker&) = delete;
  ObjectPacker& operator=(const ObjectPacker&) = delete;

  // Whether an object belongs in an object stream. |encrypted| is whether the file is written with a
  // cipher, |encryption| its dictionary or null.
  bool Takes(uint32_t number, const CPDF_Object& object, bool encrypted, const CPDF_Object* encryption) const;

  // Puts an object into the present object stream and writes that to |archive| when it is full.
  // |cipher| may be null. False if writing failed.
  bool Add(uint32_t number, const CPDF_Object& object, IFX_ArchiveStream& archive, const CPDF_CryptoHandler* cipher);

  // Writes what has gathered. To be called once, behind the last object.
  bool Finish(IFX_ArchiveStream& archive, const CPDF_CryptoHandler* cipher);

  // The last number given away so far.
  uint32_t last_number() const { return last_number_; }

  // Writes the cross-reference stream as object |number| and the end of the file. |offsets| are
  // those of objects that were not packed, |encryption| the number of the encryption dictionary or
  // 0; |identifier| may be null. The other entries are those of the source's trailer.
  bool WriteCrossReferences(IFX_ArchiveStream& archive,
                            uint32_t number,
                            const std::map<uint32_t, FX_FILESIZE>& offsets,
                            uint32_t encryption,
                            const CPDF_Array* identifier) const;

 private:
  struct Packed {
    uint32_t number = 0;
    uint32_t stream = 0;
    uint32_t index = 0;
  };

  bool WriteObjectStream(IFX_ArchiveStream& archive, const CPDF_CryptoHandler* cipher);
  std::string TrailerEntries(uint32_t encryption, const CPDF_Array* identifier) const;

  const CPDF_Document& document_;
  uint32_t last_number_;
  std::string heads_;   // number and offset of each object in the present stream
  std::string bodies_;
  uint32_t count_ = 0;  // in the present stream
  std::vector<Packed> packed_;  // by number once all have been added
  std::map<uint32_t, FX_FILESIZE> streams_;  // offsets of the object streams
};

#endif  // QUILLMERE_OBJECT_PACKER_H_
