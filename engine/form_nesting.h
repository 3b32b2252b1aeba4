#ifndef QUILLMERE_FORM_NESTING_H_
#define QUILLMERE_FORM_NESTING_H_

#include <algorithm>
#include <cstddef>
#include <set>

class CPDF_Stream;

// How the forms of one page stand in each other while the page is parsed. A form that draws
// itself, directly or through others, is left out at the inner place: followed down every
// branch, a file of two kilobytes would fill any memory. So would forms each of which draws the
// next one many times, and a page that draws one long form again and again: what repeated forms
// bring ends with kMostRepeatedObjects, and later forms are left out. What stands in the file once
// is never counted. The busiest pages of 600 manuals draw 60,000 objects in forms.
class FormNesting {
 public:
  static constexpr size_t kMostRepeatedObjects = 500'000;

  // A form that is being parsed, for as long as this lives. The stream must outlive it.
  class Opened {
   public:
    Opened(FormNesting& nesting, const CPDF_Stream* stream)
        : nesting_(nesting),
          stream_(stream),
          opened_(nesting.Open(stream)),
          repeated_(opened_ && !nesting.seen_.insert(stream).second) {}
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;
    ~Opened() {
      if (opened_) nesting_.open_.erase(stream_);
    }

    // Whether the form may be parsed at all.
    explicit operator bool() const { return opened_; }

    // To be told how many objects the form itself turned out to hold.
    void Count(size_t objects) {
      if (repeated_) nesting_.repeated_objects_ += std::max<size_t>(objects, 1);
    }

   private:
    FormNesting& nesting_;
    const CPDF_Stream* stream_;
    bool opened_;
    bool repeated_;
  };

 private:
  bool Open(const CPDF_Stream* stream) {
    return repeated_objects_ < kMostRepeatedObjects && open_.insert(stream).second;
  }

  std::set<const CPDF_Stream*> open_;
  std::set<const CPDF_Stream*> seen_;
  size_t repeated_objects_ = 0;
};

#endif  // QUILLMERE_FORM_NESTING_H_
