#pragma once

#include <cstddef>
#include <string>
#include <vector>

// Small PDF files as byte strings. Callers write readable PDF text; the builder fills in object
// numbers, offsets and the cross-reference table.
namespace quillmere::test {

// The object level: bodies are the text between "N 0 obj" and "endobj".
class PdfFile {
 public:
  // Number of the new object, from 1.
  int add(const std::string& body);
  // A number whose body is set later.
  int reserve();
  void set(int number, const std::string& body);
  // `entries` go into the stream's dictionary next to its length.
  int addStream(const std::string& data, const std::string& entries = "");
  // The whole file; `trailerEntries` go into the trailer next to Root and Size.
  std::string finish(int root, const std::string& trailerEntries = "") const;

  // "N 0 R".
  static std::string reference(int number);
  // A text string in UTF-16, as hexadecimal digits between angle brackets.
  static std::string textString(const std::u16string& text);

 private:
  std::vector<std::string> bodies_;
};

// `content`, annotations and outline entries may refer to a page by its one-based number:
// "{page 3}" becomes the reference to that page's object.
struct PdfPage {
  double width = 612;   // points
  double height = 792;  // points
  double left = 0;      // the corner of the page's media box, in points
  double bottom = 0;
  int rotate = 0;  // degrees; left out of the page when 0
  // A content stream. Fonts F1 Helvetica, F2 Times-Roman and F3 Courier are available.
  std::string content;
  std::vector<std::string> annotations;  // dictionaries with their angle brackets
  std::string entries;                   // further entries of the page dictionary
};

struct PdfOutlineItem {
  std::u16string title;
  // Entries with its target, such as "/Dest [{page 3} /Fit]"; may be empty.
  std::string target;
  std::vector<PdfOutlineItem> children;
  bool open = true;
};

struct PdfOptions {
  std::vector<PdfOutlineItem> outline;
  std::string catalogEntries;
  std::string trailerEntries;
};

std::string buildPdf(const std::vector<PdfPage>& pages, const PdfOptions& options = {});

// Page i carries the text "Page i" (one-based) in Helvetica.
std::string simplePdf(int pages, double width = 612, double height = 792);

// Content that shows one line of text with its baseline starting at x, y. ASCII only; parentheses
// and backslashes are escaped.
std::string textContent(const std::string& text, double x = 72, double y = 700, double size = 24,
                        const std::string& font = "F1");
// Content that fills a rectangle; red, green and blue are 0 to 1.
std::string rectangleContent(double x, double y, double width, double height, double red,
                             double green, double blue);

// A link annotation. `action` is its target: "/Dest [...]" or "/A << ... >>".
std::string linkAnnotation(double left, double bottom, double right, double top,
                           const std::string& action);
// "/Dest [{page N} /XYZ null TOP null]"; a page without `top` is "/Fit".
std::string pageDestination(int page);
std::string pageDestination(int page, double top);
// "/A << /S /URI /URI (...) >>".
std::string webAction(const std::string& address);

// One page of 300 by 400 points with form fields and no content: a green signature at 50 300 150
// 350, a text field with the value "HHHH" and no picture at 50 200 150 220, and a hidden red
// signature at 50 100 150 150.
std::string filledFormPdf();

// Damaged and unusual files.
std::string emptyFile();     // no byte
std::string garbageFile();   // bytes that are not a PDF
std::string truncatedPdf();  // ends inside its first object
std::string truncatedPdf(const std::string& whole, std::size_t bytes);  // the first `bytes`
std::string wrongOffsetsPdf(int pages);  // every xref offset is wrong; can be repaired
std::string cyclicPageTreePdf();         // a page tree node is its own child
std::string zeroPagePdf();               // sound, with an empty page tree
std::string passwordProtectedPdf();      // opens only with a password
// One page of 600 by 800 points with "Quill and page", encrypted; the empty password opens it.
std::string encryptedPdf();
std::string manyPagesPdf(int pages);  // pages share one content
std::string hugePagePdf(double width = 1e6, double height = 1e6);
// One page with "ebb" and a form with "flood", which draws itself and "neap", another form that
// draws both again: following them without a limit would exhaust any memory.
std::string formsThatDrawThemselvesPdf();

}  // namespace quillmere::test
