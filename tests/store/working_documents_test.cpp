#include "store/working_documents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/text_format.h"
#include "store/binder_file.h"
#include "store/binder_library.h"
#include "support/settings_file.h"

namespace quillmere::test {
namespace {

using platform::standIn;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string kMark = "\xEF\xBB\xBF";
const std::string kBoldHead = kMark + "# collapsed=0\r\n# bold=1\r\n";

class WorkingDocumentsTest : public SettingsFileTest {
 protected:
  static void putList(const std::string& text) { platform::putFile(WorkingDocsPath(), text); }
  static std::optional<std::string> listOnDisk() { return platform::fileBytes(WorkingDocsPath()); }
  static BinderFile& binder() { return session.binderLibrary.at(0); }
  static std::vector<std::u16string>& files() { return binder().files; }
};

// Loading.

TEST_F(WorkingDocumentsTest, TheListOfTheLastSessionComesBack) {
  putList("C:\\a.pdf\tpage=3\r\nC:\\b.pdf\r\n");
  session.binderLibrary.resize(1);
  LoadWorkingDocuments();
  ASSERT_EQ(session.binderLibrary.size(), 2u);
  EXPECT_TRUE(binder().isWorkingDocuments);
  EXPECT_EQ(binder().name, u"Working Documents");
  EXPECT_EQ(binder().path, WorkingDocsPath());
  EXPECT_THAT(files(), ElementsAre(u"C:\\a.pdf", u"C:\\b.pdf"));
  EXPECT_EQ(binder().views.size(), 1u);
}

TEST_F(WorkingDocumentsTest, ItIsMadeOnce) {
  LoadWorkingDocuments();
  files() = {u"C:\\a.pdf"};
  LoadWorkingDocuments();
  EXPECT_EQ(session.binderLibrary.size(), 1u);
  EXPECT_THAT(files(), ElementsAre(u"C:\\a.pdf"));
}

TEST_F(WorkingDocumentsTest, AListWithoutAHeadLineReadsBold) {
  putList("C:\\a.pdf\r\n");
  LoadWorkingDocuments();
  EXPECT_TRUE(binder().bold);
  session.binderLibrary.clear();
  putList("# bold=0\r\n");
  LoadWorkingDocuments();
  EXPECT_FALSE(binder().bold);
}

TEST_F(WorkingDocumentsTest, AMissingFileGivesAnEmptyList) {
  LoadWorkingDocuments();
  EXPECT_THAT(files(), IsEmpty());
  EXPECT_EQ(binder().path, WorkingDocsPath());
  EXPECT_TRUE(binder().bold);
  EXPECT_FALSE(binder().collapsed);
}

TEST_F(WorkingDocumentsTest, AListThatIsNotRestoredIsDeleted) {
  session.settings.restoreOpenDocs = false;
  putList("C:\\a.pdf\r\n# collapsed=1\r\n");
  LoadWorkingDocuments();
  EXPECT_EQ(listOnDisk(), std::nullopt);
  EXPECT_THAT(files(), IsEmpty());
  EXPECT_EQ(binder().path, WorkingDocsPath());
  EXPECT_FALSE(binder().collapsed);
}

TEST_F(WorkingDocumentsTest, AViewerReadsNoListAndKeepsNoFile) {
  putList("C:\\a.pdf\r\n");
  session.viewerRole = true;
  session.settings.restoreOpenDocs = false;
  LoadWorkingDocuments();
  EXPECT_THAT(files(), IsEmpty());
  EXPECT_EQ(binder().path, u"");
  AddToWorkingDocuments(u"C:\\b.pdf", kWorkingDocsToHead);
  EXPECT_THAT(files(), IsEmpty());
  EXPECT_EQ(listOnDisk(), "C:\\a.pdf\r\n");
}

TEST_F(WorkingDocumentsTest, WithoutADataFolderThereIsNoSuchBinder) {
  standIn().localAppDataFolder = u"";
  LoadWorkingDocuments();
  AddToWorkingDocuments(u"C:\\a.pdf", kWorkingDocsToHead);
  EXPECT_THAT(session.binderLibrary, IsEmpty());
  EXPECT_EQ(WorkingDocsPath(), u"");
  EXPECT_FALSE(IsWorkingDocsPath(u""));
}

TEST_F(WorkingDocumentsTest, ItsPathIsKnownInAnyLetterCase) {
  EXPECT_TRUE(IsWorkingDocsPath(u"C:\\USERS\\User\\AppData\\Local\\Quillmere\\workingdocs.LST"));
  EXPECT_FALSE(IsWorkingDocsPath(u"C:\\WorkingDocs.lst"));
}

// Another main window beside this one.

TEST_F(WorkingDocumentsTest, ASecondMainWindowReadsTheListAndNeverWritesIt) {
  session.ownsPrimaryName = false;
  putList("C:\\a.pdf\r\n");
  LoadWorkingDocuments();
  EXPECT_THAT(files(), ElementsAre(u"C:\\a.pdf"));
  AddToWorkingDocuments(u"C:\\b.pdf", kWorkingDocsToHead);
  EXPECT_THAT(files(), ElementsAre(u"C:\\b.pdf", u"C:\\a.pdf"));
  RemoveFileRecord(0, 0);
  EXPECT_EQ(listOnDisk(), "C:\\a.pdf\r\n");
}

TEST_F(WorkingDocumentsTest, ASecondMainWindowDoesNotDeleteTheList) {
  session.ownsPrimaryName = false;
  session.settings.restoreOpenDocs = false;
  putList("C:\\a.pdf\r\n");
  LoadWorkingDocuments();
  EXPECT_THAT(files(), IsEmpty());
  EXPECT_EQ(listOnDisk(), "C:\\a.pdf\r\n");
}

// Joining.

TEST_F(WorkingDocumentsTest, ADocumentJoinsAtTheHeadAndIsWritten) {
  LoadWorkingDocuments();
  AddToWorkingDocuments(u"C:\\a.pdf", kWorkingDocsToHead);
  AddToWorkingDocuments(u"C:\\b.pdf", kWorkingDocsToHead);
  EXPECT_EQ(listOnDisk(), kBoldHead + "C:\\b.pdf\r\nC:\\a.pdf\r\n");
  EXPECT_EQ(standIn().window.binderTreeRebuildsPosted, 2);
}

TEST_F(WorkingDocumentsTest, AnOpenedDocumentIsSeenBeforeTheListIsWritten) {
  standIn().window.paintsLater = true;
  AddToWorkingDocuments(u"C:\\a.pdf", kWorkingDocsToHead);
  AddToWorkingDocuments(u"C:\\b.pdf", kWorkingDocsToHead);
  EXPECT_EQ(listOnDisk(), std::nullopt);
  standIn().window.paintNow();
  EXPECT_EQ(listOnDisk(), kBoldHead + "C:\\b.pdf\r\nC:\\a.pdf\r\n");
}

TEST_F(WorkingDocumentsTest, AListThatIsInItsFileIsNotWrittenAgain) {
  AddToWorkingDocuments(u"C:\\a.pdf", kWorkingDocsToHead);
  putList("by hand");
  SaveWorkingDocuments();
  EXPECT_EQ(listOnDisk(), "by hand");
}

TEST_F(WorkingDocumentsTest, TheBinderIsMadeWhenItIsMissing) {
  putList("C:\\a.pdf\r\n");
  AddToWorkingDocuments(u"C:\\b.pdf", kWorkingDocsToHead);
  EXPECT_THAT(files(), ElementsAre(u"C:\\b.pdf", u"C:\\a.pdf"));
}

TEST_F(WorkingDocumentsTest, ADocumentOpenedAgainMovesToTheHeadInItsNewSpelling) {
  LoadWorkingDocuments();
  files() = {u"C:\\a.pdf", u"C:\\b.pdf", u"C:\\c.pdf"};
  AddToWorkingDocuments(u"c:\\C.PDF", kWorkingDocsToHead);
  EXPECT_THAT(files(), ElementsAre(u"c:\\C.PDF", u"C:\\a.pdf", u"C:\\b.pdf"));
}

TEST_F(WorkingDocumentsTest, ADocumentOpenedFromTheListKeepsItsPlaceAndTakesItsNewSpelling) {
  LoadWorkingDocuments();
  files() = {u"C:\\a.pdf", u"C:\\b.pdf"};
  AddToWorkingDocuments(u"c:\\B.pdf", kWorkingDocsKeepPlace);
  EXPECT_THAT(files(), ElementsAre(u"C:\\a.pdf", u"c:\\B.pdf"));
  AddToWorkingDocuments(u"C:\\new.pdf", kWorkingDocsKeepPlace);
  EXPECT_THAT(files(), ElementsAre(u"C:\\new.pdf", u"C:\\a.pdf", u"c:\\B.pdf"));
}

TEST_F(WorkingDocumentsTest, ADocumentOfAnotherBinderIsLeftOut) {
  LoadWorkingDocuments();
  AddToWorkingDocuments(u"C:\\a.pdf", kWorkingDocsLeaveAlone);
  AddToWorkingDocuments(u"", kWorkingDocsToHead);
  EXPECT_THAT(files(), IsEmpty());
  EXPECT_EQ(listOnDisk(), std::nullopt);
  EXPECT_EQ(standIn().window.binderTreeRebuildsPosted, 0);
}

TEST_F(WorkingDocumentsTest, AFullListTakesNoFurtherDocumentAndSaysNothing) {
  LoadWorkingDocuments();
  for (int i = 0; i < 1000; ++i) files().push_back(u"C:\\" + decimal(i) + u".pdf");
  AddToWorkingDocuments(u"C:\\new.pdf", kWorkingDocsToHead);
  EXPECT_EQ(files().size(), 1000u);
  EXPECT_EQ(files().front(), u"C:\\0.pdf");
  EXPECT_EQ(listOnDisk(), std::nullopt);
  EXPECT_EQ(standIn().window.binderTreeRebuildsPosted, 0);
  AddToWorkingDocuments(u"C:\\999.pdf", kWorkingDocsToHead);
  EXPECT_EQ(files().front(), u"C:\\999.pdf");
  EXPECT_EQ(files().size(), 1000u);
}

TEST_F(WorkingDocumentsTest, ManyDocumentsAreOneWriteAndOneRebuild) {
  LoadWorkingDocuments();
  AddToWorkingDocuments(std::vector<std::u16string>{u"C:\\a.pdf", u"", u"C:\\b.pdf", u"C:\\A.pdf"},
                        kWorkingDocsToHead);
  EXPECT_THAT(files(), ElementsAre(u"C:\\A.pdf", u"C:\\b.pdf"));
  EXPECT_EQ(standIn().window.binderTreeRebuildsPosted, 1);
}

TEST_F(WorkingDocumentsTest, RelativePathsEnterAsAbsoluteOnes) {
  standIn().workingFolder = u"C:\\Texts";
  AddToWorkingDocuments(u"a.pdf", kWorkingDocsToHead);
  AddToWorkingDocuments(u"C:\\texts\\A.pdf", kWorkingDocsToHead);
  EXPECT_THAT(files(), ElementsAre(u"C:\\texts\\A.pdf"));
}

TEST_F(WorkingDocumentsTest, AFailedWriteIsSilentAndKeepsTheListInMemory) {
  LoadWorkingDocuments();
  putList("");
  platform::setReadOnly(WorkingDocsPath(), true);
  AddToWorkingDocuments(u"C:\\a.pdf", kWorkingDocsToHead);
  EXPECT_THAT(files(), ElementsAre(u"C:\\a.pdf"));
  EXPECT_EQ(listOnDisk(), "");
}

// A list that is in use elsewhere when the program starts.

TEST_F(WorkingDocumentsTest, AListThatIsLockedAtTheStartIsNotLostByTheFirstWrite) {
  putList("C:\\a.pdf\tpage=2\r\nC:\\b.pdf\r\n");
  platform::setOtherUse(WorkingDocsPath(), platform::OtherUse::Exclusive);
  LoadWorkingDocuments();
  AddToWorkingDocuments(u"C:\\B.pdf", kWorkingDocsToHead);
  platform::setOtherUse(WorkingDocsPath(), platform::OtherUse::Nobody);
  EXPECT_EQ(listOnDisk(), "C:\\a.pdf\tpage=2\r\nC:\\b.pdf\r\n");
  AddToWorkingDocuments(u"C:\\c.pdf", kWorkingDocsToHead);
  EXPECT_THAT(files(), ElementsAre(u"C:\\c.pdf", u"C:\\B.pdf", u"C:\\a.pdf"));
  EXPECT_EQ(listOnDisk(), kBoldHead + "C:\\c.pdf\r\nC:\\B.pdf\r\nC:\\a.pdf\tpage=2\r\n");
  RemoveFileRecord(0, 2);
  EXPECT_THAT(files(), ElementsAre(u"C:\\c.pdf", u"C:\\B.pdf"));
}

class LockedListTest : public WorkingDocumentsTest {
 protected:
  // The list cannot be read at the start, then another document joins, then it can be read.
  LockedListTest() {
    putList("C:\\a.pdf\r\nC:\\b.pdf\tpage=2\r\n");
    platform::setOtherUse(WorkingDocsPath(), platform::OtherUse::Exclusive);
    LoadWorkingDocuments();
    AddToWorkingDocuments(u"C:\\B.pdf", kWorkingDocsToHead);
    platform::setOtherUse(WorkingDocsPath(), platform::OtherUse::Nobody);
    standIn().window.binderTreeRebuildsPosted = 0;
  }
};

TEST_F(LockedListTest, WhatIsRemovedFromItDoesNotComeBack) {
  RemoveFileRecord(0, 0);
  EXPECT_THAT(files(), ElementsAre(u"C:\\a.pdf"));
  EXPECT_EQ(listOnDisk(), kBoldHead + "C:\\a.pdf\r\n");
  EXPECT_TRUE(binder().views.empty());
  EXPECT_THAT(session.settings.recentFiles, ElementsAre(u"C:\\B.pdf"));
}

TEST_F(LockedListTest, WhenAllAreRemovedThoseOfItsFileGoToo) {
  RemoveAllFileRecords(0);
  EXPECT_THAT(files(), IsEmpty());
  EXPECT_EQ(listOnDisk(), kBoldHead);
  EXPECT_THAT(session.settings.recentFiles, ElementsAre(u"C:\\B.pdf", u"C:\\a.pdf"));
}

TEST_F(LockedListTest, TheTreeFollowsOnceItIsRead) {
  EXPECT_TRUE(WriteBinderFile(binder()));
  EXPECT_THAT(files(), ElementsAre(u"C:\\B.pdf", u"C:\\a.pdf"));
  EXPECT_EQ(standIn().window.binderTreeRebuildsPosted, 1);
}

TEST_F(WorkingDocumentsTest, ALockedListThatIsDeletedMeanwhileIsMadeAnew) {
  putList("C:\\a.pdf\r\n");
  platform::setOtherUse(WorkingDocsPath(), platform::OtherUse::Exclusive);
  LoadWorkingDocuments();
  platform::setOtherUse(WorkingDocsPath(), platform::OtherUse::Nobody);
  platform::deleteFile(WorkingDocsPath());
  AddToWorkingDocuments(u"C:\\b.pdf", kWorkingDocsToHead);
  EXPECT_EQ(listOnDisk(), kBoldHead + "C:\\b.pdf\r\n");
}

}  // namespace
}  // namespace quillmere::test
