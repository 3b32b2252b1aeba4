// Forms that draw forms.

#include <string>
#include <vector>

#include "fpdf_edit.h"
#include "quillmere_engine.h"
#include "support.h"
#include "tests.h"

namespace {

// How many objects |document|'s only page holds, those of forms within forms too.
int CountAllObjects(FPDF_DOCUMENT document) {
  ScopedFPDFPage page(FPDF_LoadPage(document, 0));
  std::vector<FPDF_PAGEOBJECT> waiting;
  for (int i = 0; i < FPDFPage_CountObjects(page.get()); ++i) {
    waiting.push_back(FPDFPage_GetObject(page.get(), i));
  }
  int count = 0;
  while (!waiting.empty()) {
    FPDF_PAGEOBJECT object = waiting.back();
    waiting.pop_back();
    ++count;
    for (int i = 0; i < FPDFFormObj_CountObjects(object); ++i) {
      waiting.push_back(FPDFFormObj_GetObject(object, i));
    }
  }
  return count;
}

// A page that draws the form /A and then a box, with the forms from object 5 on.
int CountWithForms(const std::string& names, const std::vector<std::string>& forms) {
  std::vector<std::string> objects = {kCatalog, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
                                      Page("/Contents 4 0 R " + XObjects(names)),
                                      Stream("/A Do 0 0 9 9 re f")};
  objects.insert(objects.end(), forms.begin(), forms.end());
  return CountAllObjects(Load(MakePdf(objects)).get());
}

}  // namespace

void TestFormsInForms() {
  // Two forms with a box each, one of them drawn twice by the other.
  Check(CountWithForms("/A 5 0 R /B 6 0 R",
                       {Form("/B Do /B Do 0 0 9 9 re f", ""), Form("0 0 9 9 re f", "")}) == 7,
        "a form within a form, twice");
  Check(CountWithForms("/A 5 0 R", {Form("/A Do 0 0 9 9 re f /A Do", "")}) == 3,
        "a form that draws itself");
  Check(CountWithForms("/A 5 0 R", {Form("/X Do 0 0 9 9 re f /X Do", XObjects("/X 5 0 R"))}) == 3,
        "a form that draws itself by its own resources");
  Check(CountWithForms("/A 5 0 R /B 6 0 R", {Form("/B Do /B Do 0 0 9 9 re f", ""),
                                             Form("/A Do 0 0 9 9 re f", "")}) == 7,
        "two forms that draw each other");

  // Each form draws the next one sixteen times, a thousand million in all.
  std::string names = "/A 5 0 R";
  std::vector<std::string> forms;
  for (int i = 0; i < 9; ++i) {
    std::string next = " /F" + std::to_string(i) + " Do";
    std::string data;
    for (int times = 0; times < 16; ++times) {
      data += next;
    }
    names += " /F" + std::to_string(i) + " " + std::to_string(6 + i) + " 0 R";
    forms.push_back(Form(data, ""));
  }
  const int count = CountWithForms(names, forms);
  Check(count > 100'000 && count < 600'000, "forms that multiply, got: " + std::to_string(count));
}


void TestFormsOnThePage() {
  // A page that draws |form| |times| times.
  const auto count = [](int times, const std::string& form) {
    std::string content;
    for (int i = 0; i < times; ++i) {
      content += "/A Do ";
    }
    return CountAllObjects(
        Load(MakePdf({kCatalog, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
                      Page("/Contents 4 0 R " + XObjects("/A 5 0 R")), Stream(content), form}))
            .get());
  };
  std::string boxes;
  for (int i = 0; i < 1000; ++i) {
    boxes += "0 0 9 9 re f ";
  }
  Check(count(300, Form(boxes, "")) == 300 * 1001, "a form drawn as often as in real documents");
  const int many = count(2000, Form(boxes, ""));
  Check(many > 400'000 && many < 600'000, "a long form drawn very often, got: " + std::to_string(many));
  Check(count(20'000, Form("0 0 9 9 re f", "")) == 40'000, "a small form drawn as a mark in a plot");
}
