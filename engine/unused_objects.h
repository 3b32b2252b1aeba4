#ifndef QUILLMERE_UNUSED_OBJECTS_H_
#define QUILLMERE_UNUSED_OBJECTS_H_

#include "core/fpdfapi/parser/cpdf_array.h"
#include "core/fpdfapi/parser/cpdf_dictionary.h"
#include "core/fpdfapi/parser/cpdf_object.h"
#include "core/fpdfapi/parser/cpdf_stream.h"
#include "core/fxcrt/retain_ptr.h"

// The parser nests objects less deeply than this.
inline constexpr int kDeepestObject = 128;

// The dictionary that |object| is or has. Raw, since a counted pointer would hide
// whether somebody else holds the dictionary.
inline const CPDF_Dictionary* DictionaryOf(const CPDF_Object* object) {
  if (!object) {
    return nullptr;
  }
  const CPDF_Stream* stream = object->AsStream();
  return stream ? stream->GetDict().Get() : object->AsDictionary();
}

// Whether nothing refers to |object| or to a part of it but what contains it.
inline bool IsUnused(const CPDF_Object* object, int levels = kDeepestObject) {
  if (!object->HasOneRef() || levels == 0) {
    return false;
  }
  if (const CPDF_Array* array = object->AsArray()) {
    CPDF_ArrayLocker locker(array);
    for (const auto& element : locker) {
      if (!IsUnused(element.Get(), levels - 1)) {
        return false;
      }
    }
    return true;
  }
  const CPDF_Dictionary* dictionary = DictionaryOf(object);
  if (!dictionary) {
    return true;
  }
  if (!dictionary->HasOneRef()) {
    return false;
  }
  CPDF_DictionaryLocker locker(dictionary);
  for (const auto& [key, value] : locker) {
    if (!IsUnused(value.Get(), levels - 1)) {
      return false;
    }
  }
  return true;
}

#endif  // QUILLMERE_UNUSED_OBJECTS_H_
