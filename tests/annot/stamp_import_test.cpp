#include "annot/stamp_import.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "annot/stamp_test.h"

namespace quillmere::test {
namespace {

using platform::standIn;
using testing::ElementsAre;
using testing::IsEmpty;

class StampImportTest : public StampTest {
 protected:
  // A file outside the library.
  static std::u16string picture(const std::u16string& name, int width = 40, int height = 20,
                                std::uint32_t color = 0xFF203040) {
    const std::u16string path = u"C:\\Pictures\\" + name;
    platform::putFile(path, plainPng(width, height, color));
    return path;
  }
  static platform::SharedPicture stored(const std::u16string& name) {
    return decodePng(platform::fileBytes(inStamps(name)).value_or(""));
  }
};

TEST_F(StampImportTest, APictureBecomesAPngOfTheLibrary) {
  EXPECT_TRUE(ImportStampFile(picture(u"My logo.jpeg", 30, 10)));
  EXPECT_THAT(names(), ElementsAre(u"My logo"));
  EXPECT_EQ(session.stampLibrary[0].path, inStamps(u"My logo.png"));
  EXPECT_EQ(session.stampLibrary[0].width, 30);
  ASSERT_TRUE(stored(u"My logo.png"));
  EXPECT_EQ(stored(u"My logo.png")->height, 10);
}

TEST_F(StampImportTest, WhiteBecomesTransparentOnlyWhereTheSettingsSaySo) {
  ASSERT_TRUE(ImportStampFile(picture(u"a.png", 2, 2, 0xFFFFFFFF)));
  EXPECT_EQ(stored(u"a.png")->pixels.front(), 0x00FFFFFFu);
  session.settings.stampAlphaEnabled = false;
  ASSERT_TRUE(ImportStampFile(picture(u"b.png", 2, 2, 0xFFFFFFFF)));
  EXPECT_EQ(stored(u"b.png")->pixels.front(), 0xFFFFFFFFu);
  session.settings.stampAlphaEnabled = true;
  session.settings.stampAlphaThreshold = 255;
  ASSERT_TRUE(ImportStampFile(picture(u"c.png", 2, 2, 0xFFFEFEFE)));
  EXPECT_EQ(stored(u"c.png")->pixels.front(), 0xFFFEFEFEu);
}

TEST_F(StampImportTest, AnotherExtensionIsAnotherNameAndGetsANumber) {
  ASSERT_TRUE(ImportStampFile(picture(u"logo.png")));
  EXPECT_TRUE(ImportStampFile(picture(u"logo.jpg")));
  EXPECT_TRUE(ImportStampFile(picture(u"logo.bmp")));
  EXPECT_THAT(names(), ElementsAre(u"logo", u"logo (1)", u"logo (2)"));
  EXPECT_EQ(session.stampLibrary[1].path, inStamps(u"logo (1).png"));
}

TEST_F(StampImportTest, OnlyWhatFollowsTheLastDotIsTheExtension) {
  ASSERT_TRUE(ImportStampFile(picture(u"v1.2.final.jpg")));
  ASSERT_TRUE(ImportStampFile(picture(u"no extension")));
  EXPECT_THAT(names(), ElementsAre(u"v1.2.final", u"no extension"));
  EXPECT_EQ(session.stampLibrary[0].path, inStamps(u"v1.2.final.png"));
  EXPECT_EQ(session.stampLibrary[1].path, inStamps(u"no extension.png"));
}

TEST_F(StampImportTest, ANumberedNameIsTheFirstThatIsFree) {
  putStamp(u"logo.png");
  putStamp(u"LOGO (1).png");
  putStamp(u"logo (3).png");
  ASSERT_TRUE(ImportStampFile(picture(u"logo.jpg")));
  EXPECT_EQ(session.stampLibrary[0].path, inStamps(u"logo (2).png"));
}

TEST_F(StampImportTest, TheLastNumberOfANameIs998) {
  for (int n = 0; n <= 997; ++n) {
    const std::string number = n == 0 ? "" : " (" + std::to_string(n) + ")";
    const std::string name = "x" + number + ".png";
    platform::putFile(inStamps(std::u16string(name.begin(), name.end())), std::string());
  }
  ASSERT_TRUE(ImportStampFile(picture(u"x.jpg")));
  EXPECT_EQ(session.stampLibrary[0].path, inStamps(u"x (998).png"));
  EXPECT_FALSE(ImportStampFile(picture(u"x.bmp")));
}

TEST_F(StampImportTest, TheSameFileNameIsRefusedIgnoringCase) {
  ASSERT_TRUE(ImportStampFile(picture(u"logo.png")));
  EXPECT_FALSE(ImportStampFile(picture(u"LOGO.PNG")));
  EXPECT_EQ(countUserStamps(), 1);
}

TEST_F(StampImportTest, OrphansKeepTheirNames) {
  putStamp(u"logo.png", 5, 5);
  EXPECT_TRUE(ImportStampFile(picture(u"logo.png")));
  EXPECT_EQ(session.stampLibrary[0].path, inStamps(u"logo (1).png"));
  EXPECT_EQ(stored(u"logo.png")->width, 5);
}

TEST_F(StampImportTest, ANameThatWouldBeACommentInTheListIsChanged) {
  standIn().openDialogAnswers = {{picture(u"#1.png")}};
  ImportStamps();
  EXPECT_THAT(names(), ElementsAre(u"_#1"));
  LoadStampLibrary();
  EXPECT_THAT(names(), ElementsAre(u"_#1"));
}

TEST_F(StampImportTest, VeryLongAndVeryThinPicturesAreRefused) {
  EXPECT_FALSE(ImportStampFile(picture(u"a.png", 2000, 100)));
  EXPECT_TRUE(ImportStampFile(picture(u"b.png", 1000, 100)));
  EXPECT_TRUE(ImportStampFile(picture(u"c.png", 100, 500)));
  EXPECT_FALSE(ImportStampFile(picture(u"d.png", 99, 500)));
  EXPECT_FALSE(ImportStampFile(picture(u"e.png", 3000, 3)));
  EXPECT_TRUE(ImportStampFile(picture(u"f.png", 1, 1)));
  EXPECT_THAT(names(), ElementsAre(u"b", u"c", u"f"));
  EXPECT_THAT(platform::namesIn(session.stampsFolder), ElementsAre(u"b.png", u"c.png", u"f.png"));
  EXPECT_TRUE(standIn().boxes.empty());
}

TEST_F(StampImportTest, WhatCannotBeDecodedIsRefusedInSilence) {
  platform::putFile(u"C:\\Pictures\\text.png", std::string("no picture"));
  const std::string whole = plainPng(40, 20, 0xFF000000);
  platform::putFile(u"C:\\Pictures\\cut.png", whole.substr(0, whole.size() / 2));
  platform::putFile(u"C:\\Pictures\\empty.png", std::string());
  for (const char16_t* name : {u"text.png", u"cut.png", u"empty.png", u"missing.png"}) {
    EXPECT_FALSE(ImportStampFile(u"C:\\Pictures\\" + std::u16string(name)));
  }
  EXPECT_THAT(platform::namesIn(session.stampsFolder), IsEmpty());
}

TEST_F(StampImportTest, AFullDiskLeavesNothingBehind) {
  const std::u16string path = picture(u"a.png");
  standIn().diskFree = 100;
  EXPECT_FALSE(ImportStampFile(path));
  EXPECT_THAT(names(), IsEmpty());
  EXPECT_THAT(platform::namesIn(session.stampsFolder), IsEmpty());
}

TEST_F(StampImportTest, AFolderThatIsAFileRefusesEverything) {
  const std::u16string path = picture(u"a.png");
  session.stampsFolder = u"C:\\Pictures\\a.png\\";
  EXPECT_FALSE(ImportStampFile(path));
  session.stampsFolder.clear();
  EXPECT_FALSE(ImportStampFile(path));
  EXPECT_THAT(names(), IsEmpty());
}

TEST_F(StampImportTest, AFolderThatTakesNoFilesRefusesEverythingInSilence) {
  fillLibrary(1);
  const std::string list = listed();
  standIn().openDialogAnswers = {{picture(u"a.png"), picture(u"b.jpg")}};
  platform::setProperties(session.stampsFolder, {0, 0, u"D:(D;;FW;;;WD)"});
  standIn().shown.clear();
  ImportStamps();
  EXPECT_THAT(names(), ElementsAre(u"1"));
  EXPECT_EQ(listed(), list);
  EXPECT_THAT(platform::namesIn(session.stampsFolder), ElementsAre(u"1.png", u"stamps.lst"));
  EXPECT_TRUE(standIn().boxes.empty());
  EXPECT_THAT(standIn().shown, IsEmpty());
}

TEST_F(StampImportTest, PathsAreLimited) {
  EXPECT_FALSE(ImportStampFile(picture(std::u16string(215, u'n') + u".png")));
  EXPECT_TRUE(ImportStampFile(picture(std::u16string(150, u'n') + u".png")));
  EXPECT_EQ(session.stampLibrary[0].name, std::u16string(63, u'n'));
}

TEST_F(StampImportTest, AnImportedNameLosesItsExtensionBeforeItsEnd) {
  ASSERT_TRUE(ImportStampFile(picture(u"a." + std::u16string(70, u'n') + u".jpg")));
  EXPECT_THAT(names(), ElementsAre(u"a." + std::u16string(61, u'n')));
}

TEST_F(StampImportTest, TheDialogOffersWhatTheSystemDecodes) {
  standIn().openDialogAnswers = {{}, {}};
  ImportStamps();
  ASSERT_EQ(standIn().openDialogs.size(), 1u);
  const platform::OpenDialogRequest& request = standIn().openDialogs[0];
  EXPECT_TRUE(request.allowSeveral);
  ASSERT_EQ(request.filters.size(), 2u);
  EXPECT_EQ(request.filters[0].name, u"Images");
  EXPECT_EQ(request.filters[0].pattern, u"*.bmp;*.dib;*.png");
  EXPECT_EQ(request.filters[1].name, u"All Files");
  EXPECT_EQ(request.filters[1].pattern, u"*.*");
  standIn().picturePatterns.clear();
  ImportStamps();
  EXPECT_EQ(standIn().openDialogs[1].filters[0].pattern,
            u"*.png;*.jpg;*.jpeg;*.bmp;*.gif;*.tif;*.tiff");
}

TEST_F(StampImportTest, ChosenFilesAreImportedInOrderAndListed) {
  standIn().openDialogAnswers = {{picture(u"b.png"), u"C:\\gone.png", picture(u"a.png")}};
  standIn().shown.clear();
  ImportStamps();
  EXPECT_THAT(names(), ElementsAre(u"b", u"a"));
  EXPECT_EQ(listed(),
            "\xEF\xBB\xBF"
            "b.png\r\na.png\r\n");
  EXPECT_THAT(standIn().shown, ElementsAre("stamp panel"));
}

TEST_F(StampImportTest, StampsOfAListThatWasInUseAreNotForgotten) {
  putStamp(u"a.png");
  putList("a.png\r\n");
  platform::setOtherUse(inStamps(u"stamps.lst"), platform::OtherUse::Exclusive);
  LoadStampLibrary();
  ASSERT_EQ(countUserStamps(), 0);
  platform::setOtherUse(inStamps(u"stamps.lst"), platform::OtherUse::Nobody);
  standIn().openDialogAnswers = {{picture(u"b.png")}};
  ImportStamps();
  EXPECT_THAT(names(), ElementsAre(u"Date", u"a", u"b"));
  EXPECT_EQ(listed(),
            "\xEF\xBB\xBF"
            "a.png\r\nb.png\r\n");
}

TEST_F(StampImportTest, NothingImportedSavesNothing) {
  standIn().openDialogAnswers = {{u"C:\\gone.png"}};
  standIn().shown.clear();
  ImportStamps();
  EXPECT_EQ(listed(), "");
  EXPECT_THAT(standIn().shown, IsEmpty());
}

TEST_F(StampImportTest, MoreFilesThanPlacesImportNothing) {
  fillLibrary(49);
  standIn().openDialogAnswers = {{picture(u"x.png"), picture(u"y.png"), picture(u"1.png")}};
  standIn().boxAnswers = {platform::BoxAnswer::Ok};
  ImportStamps();
  EXPECT_EQ(countUserStamps(), 49);
  ASSERT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(standIn().boxes[0].title, u"Stamp Library Full");
  EXPECT_EQ(standIn().boxes[0].icon, platform::BoxIcon::Information);
  EXPECT_EQ(standIn().boxes[0].text,
            u"You selected 2 new stamp(s), but only 1 slot(s) remain in the library (limit: 50).\n"
            u"No stamps were added.");
}

TEST_F(StampImportTest, OneFileForAFullLibraryHasItsOwnWords) {
  fillLibrary(50);
  standIn().openDialogAnswers = {{picture(u"x.png")}};
  standIn().boxAnswers = {platform::BoxAnswer::Ok};
  ImportStamps();
  ASSERT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(standIn().boxes[0].text,
            u"The stamp library is full (50 stamps). Remove a stamp before adding more.");
}

TEST_F(StampImportTest, AKnownNameForAFullLibraryIsRefusedInSilence) {
  fillLibrary(50);
  standIn().openDialogAnswers = {{picture(u"7.png")}};
  ImportStamps();
  EXPECT_EQ(countUserStamps(), 50);
  EXPECT_TRUE(standIn().boxes.empty());
}

TEST_F(StampImportTest, TheDateStampTakesNoPlace) {
  putStamp(u"__date__.png");
  fillLibrary(49);
  EXPECT_TRUE(ImportStampFile(picture(u"x.png")));
  EXPECT_FALSE(ImportStampFile(picture(u"y.png")));
  EXPECT_EQ(session.stampLibrary.size(), 51u);
}

}  // namespace
}  // namespace quillmere::test
