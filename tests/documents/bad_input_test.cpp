// Damaged and unsuitable files: the user is told why they do not open, and the program carries on.
#include <fpdf_text.h>
#include <gtest/gtest.h>

#include <string>

#include "documents/modes.h"
#include "documents/open.h"
#include "documents/open_requests.h"
#include "store/working_documents.h"
#include "support/pdf_builder.h"
#include "support/session_test.h"
#include "view/navigation.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::standIn;

constexpr ViewMode kAllModes[] = {ViewMode::SinglePage, ViewMode::Book, ViewMode::IndependentPages,
                                  ViewMode::TwoDocuments};

class BadInputTest : public SessionTest {
 protected:
  static bool open(const std::u16string& path) {
    return openRequested(path, 0, kWorkingDocsToHead, true);
  }

  // Expects that opening fails with this PDFium error and that a sound file opens afterwards, in
  // every mode and in a viewer.
  static void expectError(const std::u16string& path, int error) {
    for (bool viewer : {false, true}) {
      for (ViewMode mode : kAllModes) {
        resetSession();
        session.viewerRole = viewer;
        session.viewMode = mode;
        standIn().boxes.clear();
        standIn().boxAnswers = {BoxAnswer::Ok};
        EXPECT_FALSE(open(path));
        ASSERT_EQ(standIn().boxes.size(), 1u);
        const std::u16string number(1, static_cast<char16_t>(u'0' + error));
        if (!viewer || error == FPDF_ERR_PASSWORD) {
          EXPECT_EQ(standIn().boxes[0].text,
                    u"Could not open PDF.\n(PDFium error " + number + u")");
        }
        EXPECT_EQ(documentOf(0), nullptr);
        EXPECT_EQ(session.panes[0].page, nullptr);
        EXPECT_FALSE(hasUnsavedChanges());

        EXPECT_TRUE(open(putPdf(u"sound.pdf", simplePdf(1))));
        EXPECT_NE(session.panes[0].pageBitmap, nullptr);
      }
    }
  }

  // Shows every page that the document claims to have, in every mode, to the end and back.
  static void walk() {
    for (ViewMode mode : {ViewMode::Book, ViewMode::IndependentPages, ViewMode::TwoDocuments,
                          ViewMode::SinglePage}) {
      setViewMode(mode);
      const int last = pageCountOf(0) - 1;
      for (int page : {1, 2, last, last - 1, 0}) {
        goToPage(0, page, page % 2 == 0);
        goToPage(1, page, false);
      }
    }
  }
};

TEST_F(BadInputTest, WhatIsNoPdf) {
  expectError(putPdf(u"garbage.pdf", garbageFile()), FPDF_ERR_FORMAT);
  expectError(putPdf(u"text.pdf", "Hello"), FPDF_ERR_FORMAT);
  expectError(putPdf(u"header.pdf", "%PDF-1.7\n"), FPDF_ERR_FORMAT);
}

TEST_F(BadInputTest, AnEmptyFile) {
  expectError(putPdf(u"empty.pdf", emptyFile()), FPDF_ERR_FORMAT);
}

TEST_F(BadInputTest, ATruncatedFile) {
  expectError(putPdf(u"cut.pdf", truncatedPdf()), FPDF_ERR_FORMAT);
}

TEST_F(BadInputTest, AFileTruncatedAnywhereOpensOrIsReported) {
  const std::string whole = simplePdf(3);
  for (std::size_t bytes = 0; bytes < whole.size(); bytes += 37) {
    resetSession();
    standIn().boxes.clear();
    standIn().boxAnswers = {BoxAnswer::Ok};
    const bool opened = open(putPdf(u"cut.pdf", truncatedPdf(whole, bytes)));
    EXPECT_EQ(standIn().boxes.empty(), opened);
    if (opened) walk();
  }
}

TEST_F(BadInputTest, ADocumentThatWantsAPassword) {
  expectError(putPdf(u"secret.pdf", passwordProtectedPdf()), FPDF_ERR_PASSWORD);
}

TEST_F(BadInputTest, AFolderInThePlaceOfAFile) {
  platform::putFolder(u"C:\\folder.pdf");
  expectError(u"C:\\folder.pdf", FPDF_ERR_FILE);
}

TEST_F(BadInputTest, AFileThatIsGone) {
  expectError(u"C:\\gone.pdf", FPDF_ERR_FILE);
}

TEST_F(BadInputTest, AFileThatAnotherProgramHoldsForItself) {
  const std::u16string path = putPdf(u"held.pdf", simplePdf(1));
  platform::setOtherUse(path, platform::OtherUse::Exclusive);
  expectError(path, FPDF_ERR_FILE);
}

TEST_F(BadInputTest, ADocumentWithoutPagesShowsNothing) {
  EXPECT_TRUE(open(putPdf(u"none.pdf", zeroPagePdf())));
  EXPECT_EQ(pageCountOf(0), 0);
  EXPECT_EQ(session.panes[0].page, nullptr);
  walk();
  EXPECT_EQ(session.panes[0].page, nullptr);
  EXPECT_EQ(session.panes[1].page, nullptr);
}

TEST_F(BadInputTest, ACyclicPageTreeEnds) {
  standIn().boxAnswers = {BoxAnswer::Ok};
  if (open(putPdf(u"cycle.pdf", cyclicPageTreePdf()))) walk();
  EXPECT_TRUE(open(putPdf(u"sound.pdf", simplePdf(1))));
}

TEST_F(BadInputTest, ADamagedTableIsRepaired) {
  EXPECT_TRUE(open(putPdf(u"repaired.pdf", wrongOffsetsPdf(4))));
  EXPECT_EQ(pageCountOf(0), 4);
  EXPECT_NE(session.panes[0].pageBitmap, nullptr);
}

TEST_F(BadInputTest, TenThousandPages) {
  EXPECT_TRUE(open(putPdf(u"many.pdf", manyPagesPdf(10000))));
  EXPECT_EQ(pageCountOf(0), 10000);
  goToPage(0, 9999, false);
  EXPECT_EQ(session.panes[0].currentPage, 9999);
  EXPECT_NE(session.panes[0].pageBitmap, nullptr);
  walk();
}

TEST_F(BadInputTest, AHugePageOpensEvenWithoutMemoryForItsPicture) {
  EXPECT_TRUE(open(putPdf(u"huge.pdf", hugePagePdf())));
  EXPECT_NE(session.panes[0].page, nullptr);
  walk();
  EXPECT_TRUE(open(putPdf(u"sound.pdf", simplePdf(1))));
  EXPECT_NE(session.panes[0].pageBitmap, nullptr);
}

int occurrences(FPDF_TEXTPAGE text, const std::u16string& word) {
  const FPDF_SCHHANDLE search =
      FPDFText_FindStart(text, reinterpret_cast<FPDF_WIDESTRING>(word.c_str()), 0, 0);
  int count = 0;
  while (FPDFText_FindNext(search)) ++count;
  FPDFText_FindClose(search);
  return count;
}

TEST_F(BadInputTest, FormsThatDrawThemselvesAreShownOnce) {
  ASSERT_TRUE(open(putPdf(u"forms.pdf", formsThatDrawThemselvesPdf())));
  EXPECT_NE(session.panes[0].pageBitmap, nullptr);
  const FPDF_TEXTPAGE text = session.panes[0].textPage.get();
  EXPECT_EQ(occurrences(text, u"ebb"), 1);
  EXPECT_EQ(occurrences(text, u"flood"), 1);
  EXPECT_EQ(occurrences(text, u"neap"), 2);
  walk();
}

TEST_F(BadInputTest, APageWithoutExtentOpens) {
  for (double side : {0.0, 0.001}) {
    EXPECT_TRUE(open(putPdf(u"flat.pdf", simplePdf(2, side, side))));
    walk();
  }
}

TEST_F(BadInputTest, NothingIsEverWrittenToAnOpenedFile) {
  const std::string bytes = wrongOffsetsPdf(3);
  const std::u16string path = putPdf(u"a.pdf", bytes);
  EXPECT_TRUE(open(path));
  walk();
  resetSession();
  EXPECT_EQ(platform::fileBytes(path), bytes);
}

}  // namespace
}  // namespace quillmere::test
