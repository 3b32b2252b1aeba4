#include "support/pdf_builder.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <map>
#include <string_view>

namespace quillmere::test {
namespace {

constexpr std::size_t kTreeFanOut = 64;
constexpr std::string_view kPageToken = "{page ";

std::string number(double value) {
  std::array<char, 48> text;
  const int length = std::snprintf(text.data(), text.size(), "%.4f", value);
  std::string result(text.data(), static_cast<std::size_t>(length));
  result.erase(result.find_last_not_of('0') + 1);
  if (result.back() == '.') result.pop_back();
  return result;
}

std::string literal(const std::string& text) {
  std::string result = "(";
  for (char c : text) {
    if (c == '(' || c == ')' || c == '\\') result += '\\';
    result += c;
  }
  return result + ")";
}

// Every "{page N}" becomes a reference to that page.
std::string resolvePages(const std::string& text, const std::vector<int>& pageNumbers) {
  std::string result;
  std::size_t at = 0;
  for (;;) {
    const std::size_t token = text.find(kPageToken, at);
    if (token == std::string::npos) return result + text.substr(at);
    result += text.substr(at, token - at);
    const std::size_t end = text.find('}', token);
    const std::size_t digits = token + kPageToken.size();
    const int page = std::stoi(text.substr(digits, end - digits));
    result += PdfFile::reference(pageNumbers.at(static_cast<std::size_t>(page - 1)));
    at = end + 1;
  }
}

std::string references(const std::vector<int>& numbers) {
  std::string result = "[";
  for (int n : numbers) result += (result.size() > 1 ? " " : "") + PdfFile::reference(n);
  return result + "]";
}

std::string fontResources() {
  std::string result = "/Resources << /Font <<";
  const std::array<const char*, 3> fonts = {"Helvetica", "Times-Roman", "Courier"};
  for (std::size_t i = 0; i < fonts.size(); ++i) {
    result += " /F" + std::to_string(i + 1) + " << /Type /Font /Subtype /Type1 /BaseFont /" +
              fonts[i] + " /Encoding /WinAnsiEncoding >>";
  }
  return result + " >> >>";
}

// The bytes that hexadecimal digits stand for.
std::string bytesOf(const std::string& digits) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

struct TreeNode {
  int object = 0;
  int pages = 0;  // leaves below
};

std::string kidsOf(const std::vector<TreeNode>& nodes) {
  std::vector<int> kids;
  for (const TreeNode& node : nodes) kids.push_back(node.object);
  return references(kids);
}

int leavesOf(const std::vector<TreeNode>& nodes) {
  int count = 0;
  for (const TreeNode& node : nodes) count += node.pages;
  return count;
}

class DocumentBuilder {
 public:
  DocumentBuilder(const std::vector<PdfPage>& pages, const PdfOptions& options)
      : pages_(pages), options_(options) {}

  std::string build() {
    const int catalog = file_.reserve();
    for (std::size_t i = 0; i < pages_.size(); ++i) pageNumbers_.push_back(file_.reserve());
    const int root = addTree();
    const int outline = addOutline();
    std::string body = "<< /Type /Catalog /Pages " + PdfFile::reference(root);
    if (outline != 0) body += " /Outlines " + PdfFile::reference(outline);
    file_.set(catalog, body + " " + resolve(options_.catalogEntries) + " >>");
    return file_.finish(catalog, options_.trailerEntries);
  }

 private:
  std::string resolve(const std::string& text) const { return resolvePages(text, pageNumbers_); }

  // Groups nodes below new parents until they fit below the root.
  int addTree() {
    const int root = file_.reserve();
    std::vector<TreeNode> level;
    std::vector<int> parents(pages_.size(), root);
    for (int page : pageNumbers_) level.push_back({page, 1});
    if (level.size() > kTreeFanOut) level = groupPages(root, parents);
    for (std::size_t i = 0; i < pages_.size(); ++i) setPage(i, parents[i]);
    file_.set(root, "<< /Type /Pages /Count " + std::to_string(leavesOf(level)) + " /Kids " +
                        kidsOf(level) + " " + fontResources() + " >>");
    return root;
  }

  std::vector<TreeNode> groupPages(int root, std::vector<int>& parents) {
    std::vector<TreeNode> groups;
    const std::size_t size = (pages_.size() + kTreeFanOut - 1) / kTreeFanOut;
    for (std::size_t first = 0; first < pages_.size(); first += size) {
      const std::size_t last = std::min(first + size, pages_.size());
      const int group = file_.reserve();
      std::vector<TreeNode> leaves;
      for (std::size_t i = first; i < last; ++i) {
        leaves.push_back({pageNumbers_[i], 1});
        parents[i] = group;
      }
      file_.set(group, "<< /Type /Pages /Parent " + PdfFile::reference(root) + " /Count " +
                           std::to_string(leavesOf(leaves)) + " /Kids " + kidsOf(leaves) + " >>");
      groups.push_back({group, leavesOf(leaves)});
    }
    return groups;
  }

  void setPage(std::size_t index, int parent) {
    const PdfPage& page = pages_[index];
    std::string body = "<< /Type /Page /Parent " + PdfFile::reference(parent) + " /MediaBox [" +
                       number(page.left) + " " + number(page.bottom) + " " +
                       number(page.left + page.width) + " " + number(page.bottom + page.height) +
                       "]";
    if (page.rotate != 0) body += " /Rotate " + std::to_string(page.rotate);
    if (!page.content.empty()) body += " /Contents " + PdfFile::reference(addContent(page.content));
    if (!page.annotations.empty()) body += " /Annots " + addAnnotations(page.annotations);
    file_.set(pageNumbers_[index], body + " " + resolve(page.entries) + " >>");
  }

  // Equal contents are stored once.
  int addContent(const std::string& content) {
    const auto [entry, isNew] = contents_.try_emplace(content, 0);
    if (isNew) entry->second = file_.addStream(content);
    return entry->second;
  }

  std::string addAnnotations(const std::vector<std::string>& annotations) {
    std::vector<int> numbers;
    for (const std::string& annotation : annotations) {
      numbers.push_back(file_.add(resolve(annotation)));
    }
    return references(numbers);
  }

  // Number of the outline's root; 0 without an outline.
  int addOutline() {
    if (options_.outline.empty()) return 0;
    const int root = file_.reserve();
    file_.set(root, "<< /Type /Outlines" + addOutlineItems(options_.outline, root) + " >>");
    return root;
  }

  // Adds siblings and returns the entries that their parent needs to refer to them.
  std::string addOutlineItems(const std::vector<PdfOutlineItem>& items, int parent) {
    std::vector<int> numbers;
    for (std::size_t i = 0; i < items.size(); ++i) numbers.push_back(file_.reserve());
    for (std::size_t i = 0; i < items.size(); ++i) {
      const PdfOutlineItem& item = items[i];
      std::string body = "<< /Title " + PdfFile::textString(item.title) + " /Parent " +
                         PdfFile::reference(parent) + " " + resolve(item.target);
      if (i > 0) body += " /Prev " + PdfFile::reference(numbers[i - 1]);
      if (i + 1 < items.size()) body += " /Next " + PdfFile::reference(numbers[i + 1]);
      if (!item.children.empty()) {
        body += addOutlineItems(item.children, numbers[i]) + " /Count " + (item.open ? "" : "-") +
                std::to_string(item.children.size());
      }
      file_.set(numbers[i], body + " >>");
    }
    return " /First " + PdfFile::reference(numbers.front()) + " /Last " +
           PdfFile::reference(numbers.back());
  }

  const std::vector<PdfPage>& pages_;
  const PdfOptions& options_;
  PdfFile file_;
  std::vector<int> pageNumbers_;
  std::map<std::string, int> contents_;
};

}  // namespace

int PdfFile::add(const std::string& body) {
  bodies_.push_back(body);
  return static_cast<int>(bodies_.size());
}

int PdfFile::reserve() {
  return add("null");
}

void PdfFile::set(int number, const std::string& body) {
  bodies_.at(static_cast<std::size_t>(number - 1)) = body;
}

int PdfFile::addStream(const std::string& data, const std::string& entries) {
  return add("<< /Length " + std::to_string(data.size()) + " " + entries + " >>\nstream\n" + data +
             "\nendstream");
}

std::string PdfFile::finish(int root, const std::string& trailerEntries) const {
  std::string file = "%PDF-1.7\n%\xE2\xE3\xCF\xD3\n";
  std::string table;
  for (std::size_t i = 0; i < bodies_.size(); ++i) {
    std::array<char, 24> entry;
    std::snprintf(entry.data(), entry.size(), "%010zu 00000 n \n", file.size());
    table += entry.data();
    file += std::to_string(i + 1) + " 0 obj\n" + bodies_[i] + "\nendobj\n";
  }
  const std::string size = std::to_string(bodies_.size() + 1);
  const std::string start = std::to_string(file.size());
  return file + "xref\n0 " + size + "\n0000000000 65535 f \n" + table + "trailer\n<< /Size " +
         size + " /Root " + reference(root) + " " + trailerEntries + " >>\nstartxref\n" + start +
         "\n%%EOF\n";
}

std::string PdfFile::reference(int number) {
  return std::to_string(number) + " 0 R";
}

std::string PdfFile::textString(const std::u16string& text) {
  std::string result = "<FEFF";
  for (char16_t unit : text) {
    std::array<char, 8> digits;
    std::snprintf(digits.data(), digits.size(), "%04X", static_cast<unsigned>(unit));
    result += digits.data();
  }
  return result + ">";
}

std::string buildPdf(const std::vector<PdfPage>& pages, const PdfOptions& options) {
  return DocumentBuilder(pages, options).build();
}

std::string simplePdf(int pages, double width, double height) {
  std::vector<PdfPage> list;
  for (int i = 1; i <= pages; ++i) {
    PdfPage page;
    page.width = width;
    page.height = height;
    page.content = textContent("Page " + std::to_string(i), width / 8, height * 7 / 8);
    list.push_back(page);
  }
  return buildPdf(list);
}

std::string textContent(const std::string& text, double x, double y, double size,
                        const std::string& font) {
  return "BT /" + font + " " + number(size) + " Tf " + number(x) + " " + number(y) + " Td " +
         literal(text) + " Tj ET\n";
}

std::string rectangleContent(double x, double y, double width, double height, double red,
                             double green, double blue) {
  return number(red) + " " + number(green) + " " + number(blue) + " rg " + number(x) + " " +
         number(y) + " " + number(width) + " " + number(height) + " re f\n";
}

std::string linkAnnotation(double left, double bottom, double right, double top,
                           const std::string& action) {
  return "<< /Type /Annot /Subtype /Link /Border [0 0 0] /Rect [" + number(left) + " " +
         number(bottom) + " " + number(right) + " " + number(top) + "] " + action + " >>";
}

std::string pageDestination(int page) {
  return "/Dest [{page " + std::to_string(page) + "} /Fit]";
}

std::string pageDestination(int page, double top) {
  return "/Dest [{page " + std::to_string(page) + "} /XYZ null " + number(top) + " null]";
}

std::string webAction(const std::string& address) {
  return "/A << /S /URI /URI " + literal(address) + " >>";
}

std::string filledFormPdf() {
  PdfFile file;
  const int catalog = file.reserve();
  const int pages = file.reserve();
  const int page = file.reserve();
  const auto picture = [&](const std::string& color) {
    return PdfFile::reference(file.addStream(color + " rg 0 0 100 50 re f",
                                             "/Type /XObject /Subtype /Form /BBox [0 0 100 50]"));
  };
  const auto addField = [&](const std::string& rect, const std::string& entries) {
    return file.add("<< /Type /Annot /Subtype /Widget /T (field) /P " + PdfFile::reference(page) +
                    " /Rect [" + rect + "] " + entries + " >>");
  };
  const std::vector<int> fields = {
      addField("50 300 150 350", "/FT /Sig /F 4 /AP << /N " + picture("0 1 0") + " >>"),
      addField("50 200 150 220", "/FT /Tx /F 4 /DA (/F1 12 Tf 0 g) /V (HHHH)"),
      addField("50 100 150 150", "/FT /Sig /F 2 /AP << /N " + picture("1 0 0") + " >>")};
  const std::string font = "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>";
  file.set(catalog,
           "<< /Type /Catalog /Pages " + PdfFile::reference(pages) +
               " /AcroForm << /NeedAppearances true /DA (/F1 12 Tf 0 g) /DR << /Font << /F1 " +
               font + " >> >> /Fields " + references(fields) + " >> >>");
  file.set(pages, "<< /Type /Pages /Count 1 /Kids " + references({page}) + " >>");
  file.set(page, "<< /Type /Page /Parent " + PdfFile::reference(pages) +
                     " /MediaBox [0 0 300 400] /Annots " + references(fields) + " >>");
  return file.finish(catalog);
}

std::string emptyFile() {
  return {};
}

std::string garbageFile() {
  std::string bytes;
  std::uint32_t state = 12345;
  for (int i = 0; i < 2000; ++i) {
    state = state * 1664525u + 1013904223u;
    bytes += static_cast<char>(state >> 24);
  }
  return bytes;
}

std::string truncatedPdf() {
  const std::string whole = simplePdf(1);
  return truncatedPdf(whole, whole.find("/Catalog"));
}

std::string truncatedPdf(const std::string& whole, std::size_t bytes) {
  return whole.substr(0, bytes);
}

std::string wrongOffsetsPdf(int pages) {
  std::string bytes = simplePdf(pages);
  bytes.insert(bytes.find('\n') + 1, "% pushes everything back\n");
  return bytes;
}

std::string cyclicPageTreePdf() {
  PdfFile file;
  const int catalog = file.reserve();
  const int tree = file.reserve();
  const int page = file.add("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] >>");
  file.set(catalog, "<< /Type /Catalog /Pages " + PdfFile::reference(tree) + " >>");
  file.set(tree, "<< /Type /Pages /Parent " + PdfFile::reference(tree) + " /Count 3 /Kids " +
                     references({tree, page, tree}) + " >>");
  return file.finish(catalog);
}

std::string zeroPagePdf() {
  return buildPdf({});
}

std::string passwordProtectedPdf() {
  // The keys match no password, in particular not the empty one.
  const std::string key(64, '5');
  PdfOptions options;
  options.trailerEntries =
      "/ID [<00112233445566778899AABBCCDDEEFF> <00112233445566778899AABBCCDDEEFF>] "
      "/Encrypt << /Filter /Standard /V 2 /R 3 /Length 128 /P -44 /O <" +
      key + "> /U <" + key + "> >>";
  PdfPage page;
  page.content = textContent("Secret");
  return buildPdf({page}, options);
}

// Its keys, /O and /U, are those of the empty password, and its content is "BT /F1 24 Tf 72 700 Td
// (Quill and page) Tj ET" as RC4 encrypts it for object 4.
std::string encryptedPdf() {
  const std::string content = bytesOf(
      "11A9745161D1CEAEFA0210DF5738FC36EFC899F04EB49413885C09CB8F9E553C32D9B5E9862B833A5F15221514");
  PdfFile file;
  const int catalog = file.reserve();
  const int tree = file.reserve();
  const int page = file.reserve();
  const std::string stream = PdfFile::reference(file.addStream(content));
  file.set(catalog, "<< /Type /Catalog /Pages " + PdfFile::reference(tree) + " >>");
  file.set(tree, "<< /Type /Pages /Count 1 /Kids [" + PdfFile::reference(page) + "] " +
                     fontResources() + " >>");
  file.set(page, "<< /Type /Page /MediaBox [0 0 600 800] /Parent " + PdfFile::reference(tree) +
                     " /Contents " + stream + " >>");
  return file.finish(
      catalog,
      "/ID [<00112233445566778899AABBCCDDEEFF> <00112233445566778899AABBCCDDEEFF>] "
      "/Encrypt << /Filter /Standard /V 2 /R 3 /Length 128 /P -44 /O <" +
          std::string(64, '5') +
          "> /U <DAD4BECA610F407E8E523EB0CA56C38100000000000000000000000000000000> >>");
}

std::string manyPagesPdf(int pages) {
  PdfPage page;
  page.content = textContent("One of many");
  return buildPdf(std::vector<PdfPage>(static_cast<std::size_t>(pages), page));
}

std::string hugePagePdf(double width, double height) {
  PdfPage page;
  page.width = width;
  page.height = height;
  page.content = rectangleContent(0, 0, width / 2, height / 2, 1, 0, 0);
  return buildPdf({page});
}

std::string formsThatDrawThemselvesPdf() {
  PdfFile file;
  const int catalog = file.reserve();
  const int pages = file.reserve();
  const std::string form = "/Type /XObject /Subtype /Form /BBox [0 0 612 792]";
  const std::string again = "1 0 0 1 0 -30 cm /Flood Do /Neap Do ";
  const int flood = file.addStream(textContent("flood", 72, 600) + again + again, form);
  const int neap = file.addStream(textContent("neap", 300, 600) + again + again, form);
  const int content = file.addStream(textContent("ebb") + "/Flood Do ");
  const int page = file.add(
      "<< /Type /Page /MediaBox [0 0 612 792] /Parent " + PdfFile::reference(pages) +
      " /Contents " + PdfFile::reference(content) +
      " /Resources << /Font << /F1 << /Type /Font /Subtype /Type1 /BaseFont /Helvetica >> >> "
      "/XObject << /Flood " +
      PdfFile::reference(flood) + " /Neap " + PdfFile::reference(neap) + " >> >> >>");
  file.set(pages, "<< /Type /Pages /Count 1 /Kids [" + PdfFile::reference(page) + "] >>");
  file.set(catalog, "<< /Type /Catalog /Pages " + PdfFile::reference(pages) + " >>");
  return file.finish(catalog);
}

}  // namespace quillmere::test
