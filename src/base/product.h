#pragma once

// The program's names and version, as users and other processes see them.
namespace quillmere {

inline constexpr const char16_t* kProductTitle = u"Quillmere";
inline constexpr const char16_t* kViewerTitle = u"Quillmere - Viewer (Read-Only)";
inline constexpr const char16_t* kProductVersion = u"1.4.3.242";

inline constexpr const char16_t* kMainWindowClass = u"QuillmereWnd";
inline constexpr const char16_t* kViewerWindowClass = u"QuillmereViewerWnd";
inline constexpr const char16_t* kPrimaryMutexName = u"Local\\Quillmere.quillmere.primary";

}  // namespace quillmere
