#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "dialogs/dialog_script.h"
#include "panels/binder_panel.h"
#include "panels/binder_rows.h"
#include "platform/text.h"
#include "session/session.h"
#include "store/binder_file.h"
#include "store/binder_library.h"
#include "support/opening_test.h"
#include "support/pdf_builder.h"

namespace quillmere::test {

using platform::standIn;
using platform::TreeRow;

using Texts = std::vector<std::u16string>;

// A test of the binder tree. The library holds the documents in use ("used.pdf", "second.pdf"),
// "Work" ("a.pdf", "b.pdf", "c.pdf") and the empty "Rest". All documents are there, and the tree
// shows them.
class BinderPanelTest : public OpeningTest {
 protected:
  BinderPanelTest() {
    session.bindersFolder = u"C:\\Binders\\";
    platform::putFolder(u"C:\\Binders");
    session.binderLibrary = {
        binder(u"Working Documents", u"C:\\WorkingDocs.lst", {u"used.pdf", u"second.pdf"}),
        binder(u"Work", u"C:\\Binders\\Work.lst", {u"a.pdf", u"b.pdf", u"c.pdf"}),
        binder(u"Rest", u"C:\\Binders\\Rest.lst", {})};
    session.binderLibrary.front().isWorkingDocuments = true;
    session.binderLibrary.front().bold = true;
    BuildBinderTree();
  }

  static BinderFile binder(const std::u16string& name, const std::u16string& path,
                           const std::vector<std::u16string>& names) {
    BinderFile binder;
    binder.name = name;
    binder.path = path;
    for (const std::u16string& file : names) binder.files.push_back(putPdf(file, simplePdf(2)));
    WriteBinderFile(binder);
    return binder;
  }

  static platform::StandInTree& tree() { return standIn().binderTree; }
  static Texts rows() { return tree().outline(); }
  static platform::StandInTreeRow& row(TreeRow number) { return tree().rows.at(number - 1); }

  // Values of rows.
  static std::int32_t head(std::size_t binder) { return binderRowValue(binder, kHeadMarker); }
  static std::int32_t file(std::size_t binder, std::uint32_t index) {
    return binderRowValue(binder, index);
  }
  static std::int32_t addDocument(std::size_t binder) {
    return binderRowValue(binder, kAddDocumentMarker);
  }
  static std::int32_t newBinder() { return binderRowValue(0, kNewBinderMarker); }

  // The row with this value; kNoTreeRow when the tree has none.
  static TreeRow rowWith(std::int32_t value) {
    for (const TreeRow number : tree().order()) {
      if (row(number).content.entry == value) return number;
    }
    return platform::kNoTreeRow;
  }
  static void select(std::int32_t value) { tree().selected = rowWith(value); }
  static std::u16string selectedText() {
    return tree().selected == platform::kNoTreeRow ? u"(none)" : row(tree().selected).content.text;
  }

  static std::vector<std::u16string>& filesOf(int binder) { return binderAt(binder).files; }
  // The binder as its file on the disk has it.
  static BinderFile onDisk(const std::u16string& path) {
    BinderFile read;
    LoadBinderFile(path, read);
    return read;
  }
};

}  // namespace quillmere::test
