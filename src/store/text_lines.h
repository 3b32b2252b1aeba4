#pragma once

#include <functional>
#include <string>
#include <string_view>

// The text files of the program: UTF-8 with a byte order mark and CR LF line ends. Little-endian
// UTF-16 is read too, as the system's runtime does.
namespace quillmere {

// Calls `take` for each line that is not empty, without its line end. Lines of more than `longest`
// units are left out, as are those with a zero unit, which no path has. Decoding takes most of the
// time, so each line of UTF-8 is offered to `takeUndecoded` first; true leaves `take` out. False,
// without a call, for text that the runtime does not read either (big-endian UTF-16).
bool readTextLines(std::string_view bytes, std::size_t longest,
                   const std::function<void(std::u16string_view)>& take,
                   const std::function<bool(std::string_view)>& takeUndecoded = nullptr);

// The bytes of a text file; `text` has its line ends already.
std::string textFileBytes(std::u16string_view text);

}  // namespace quillmere
