#ifndef QUILLMERE_REACH_H_
#define QUILLMERE_REACH_H_

namespace {

// Names a private member of another class, which explicit instantiation may:
//
//   struct NameOf {
//     friend constexpr auto Reached(NameOf);
//   };
//   template struct Reach<NameOf, &Other::name_>;
//   ... other.*Reached(NameOf()) ...
template <typename Key, auto Member>
struct Reach {
  friend constexpr auto Reached(Key) { return Member; }
};

}  // namespace

#endif  // QUILLMERE_REACH_H_
