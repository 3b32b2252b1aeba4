#include "panels/binder_rows.h"

#include "panels/binder_panel_test.h"

namespace quillmere::test {
namespace {

TEST(BinderFileText, APdfExtensionIsCutInAnyCase) {
  EXPECT_EQ(binderFileText(u"C:\\folder\\Report.pdf"), u"Report");
  EXPECT_EQ(binderFileText(u"C:\\folder\\REPORT.PDF"), u"REPORT");
  EXPECT_EQ(binderFileText(u"\\\\server\\share\\a.b.Pdf"), u"a.b");
  EXPECT_EQ(binderFileText(u"//server/share/a.pdf"), u"a");
  EXPECT_EQ(binderFileText(u"C:\\folder/a.pdf"), u"a");
}

TEST(BinderFileText, OtherExtensionsStay) {
  EXPECT_EQ(binderFileText(u"C:\\a.pdf.txt"), u"a.pdf.txt");
  EXPECT_EQ(binderFileText(u"C:\\a.pdfx"), u"a.pdfx");
  EXPECT_EQ(binderFileText(u"C:\\apdf"), u"apdf");
  EXPECT_EQ(binderFileText(u"a"), u"a");
}

// A row without text could not be clicked.
TEST(BinderFileText, AnExtensionAloneStays) {
  EXPECT_EQ(binderFileText(u"C:\\.pdf"), u".pdf");
}

TEST_F(BinderPanelTest, TheTipOfARowIsItsFullPath) {
  EXPECT_EQ(binderRowTip(file(1, 1)), u"C:\\b.pdf");
  EXPECT_EQ(binderRowTip(head(1)), u"C:\\Binders\\Work.lst");
  EXPECT_EQ(binderRowTip(head(0)), u"");
  EXPECT_EQ(binderRowTip(addDocument(1)), u"");
  EXPECT_EQ(binderRowTip(newBinder()), u"");
  EXPECT_EQ(binderRowTip(-1), u"");
}

TEST_F(BinderPanelTest, ValuesOfNoRowStandForNothing) {
  for (const std::int32_t value : {-1, file(1, 3), file(9, 0), head(3), addDocument(50)}) {
    EXPECT_EQ(binderRowOf(value).kind, BinderRowKind::None) << value;
  }
}

TEST_F(BinderPanelTest, ARowIsFoundByItsPathsWhereverTheLibraryHasThemNow) {
  const BinderRow row = binderRowOf(file(1, 2));
  std::swap(session.binderLibrary[1], session.binderLibrary[2]);
  std::swap(filesOf(2)[0], filesOf(2)[2]);
  EXPECT_EQ(binderIndexOf(row), 2);
  EXPECT_EQ(fileIndexOf(row), 0);
  filesOf(2).erase(filesOf(2).begin());
  EXPECT_EQ(fileIndexOf(row), kNoBinder);
  session.binderLibrary.pop_back();
  EXPECT_EQ(binderIndexOf(row), kNoBinder);
}

TEST_F(BinderPanelTest, AViewersDocumentsInUseAreFoundWithoutAFile) {
  binderAt(0).path.clear();
  BuildBinderTree();
  const BinderRow row = binderRowOf(file(0, 1));
  EXPECT_EQ(binderIndexOf(row), 0);
  EXPECT_EQ(fileIndexOf(row), 1);
}

}  // namespace
}  // namespace quillmere::test
