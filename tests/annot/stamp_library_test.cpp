#include "annot/stamp_library.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "annot/date_stamp.h"
#include "annot/stamp_pictures.h"
#include "annot/stamp_test.h"

namespace quillmere::test {
namespace {

using platform::standIn;
using testing::ElementsAre;
using testing::IsEmpty;

class StampLibraryTest : public StampTest {};

TEST_F(StampLibraryTest, WithoutAFolderThereIsNoLibrary) {
  session.stampsFolder.clear();
  LoadStampLibrary();
  EXPECT_THAT(names(), IsEmpty());
}

TEST_F(StampLibraryTest, AFolderThatIsAFileIsAnEmptyLibrary) {
  session.stampsFolder = u"C:\\Stamps\\";
  platform::putFile(u"C:\\Stamps", std::string("a file"));
  LoadStampLibrary();
  refreshStampLibrary();
  EXPECT_THAT(names(), IsEmpty());
  EXPECT_THAT(ListStampFiles(false), IsEmpty());
  EXPECT_EQ(platform::fileBytes(u"C:\\Stamps"), "a file");
  EXPECT_TRUE(standIn().boxes.empty());
}

TEST_F(StampLibraryTest, AnEmptyFolderGetsAnEmptyList) {
  LoadStampLibrary();
  EXPECT_THAT(names(), IsEmpty());
  EXPECT_EQ(listed(), "\xEF\xBB\xBF");
}

TEST_F(StampLibraryTest, TheListGivesTheOrder) {
  putStamp(u"a.png", 40, 20);
  putStamp(u"b.png", 30, 60);
  putList(
      "\xEF\xBB\xBF"
      "b.png\r\na.png\r\n");
  LoadStampLibrary();
  EXPECT_THAT(names(), ElementsAre(u"b", u"a"));
  EXPECT_EQ(session.stampLibrary[0].path, inStamps(u"b.png"));
  EXPECT_EQ(session.stampLibrary[0].width, 30);
  EXPECT_EQ(session.stampLibrary[0].height, 60);
  EXPECT_FALSE(session.stampLibrary[0].isSystem);
}

TEST_F(StampLibraryTest, TheDateStampStandsFirst) {
  putStamp(u"a.png");
  putStamp(u"__date__.png", 200, 80);
  putList("a.png\n");
  LoadStampLibrary();
  EXPECT_THAT(names(), ElementsAre(u"Date", u"a"));
  EXPECT_TRUE(session.stampLibrary[0].isSystem);
  EXPECT_EQ(countUserStamps(), 1);
}

TEST_F(StampLibraryTest, CommentsBlanksAndMissingFilesAreSkipped) {
  putStamp(u"a.png");
  putStamp(u"b c.png");
  platform::putFile(inStamps(u"text.png"), std::string("no picture"));
  const std::string list = "# a comment\r\n\r\n \t\r\ngone.png\r\ntext.png\r\na.png \t \r\nb c.png";
  putList(list);
  LoadStampLibrary();
  EXPECT_THAT(names(), ElementsAre(u"a", u"b c"));
  EXPECT_EQ(listed(), list) << "the list is not rewritten for that";
  SaveStampList();
  EXPECT_EQ(listed(),
            "\xEF\xBB\xBF"
            "a.png\r\nb c.png\r\n");
}

TEST_F(StampLibraryTest, ListsInOtherEncodingsAreRead) {
  putStamp(u"\u00FC.png");
  putList(std::string("\xFF\xFE\xFC\0.\0p\0n\0g\0\r\0\n\0", 14));
  LoadStampLibrary();
  EXPECT_THAT(names(), ElementsAre(u"\u00FC"));
  putList("\xC3\xBC.png\n");
  LoadStampLibrary();
  EXPECT_THAT(names(), ElementsAre(u"\u00FC"));
}

TEST_F(StampLibraryTest, WithoutAListTheFolderIsSearched) {
  putStamp(u"b.PNG");
  putStamp(u"a.png");
  putStamp(u"__DATE__.png");
  putStamp(u"photo.jpg");
  LoadStampLibrary();
  EXPECT_THAT(names(), ElementsAre(u"Date", u"a", u"b"));
  EXPECT_EQ(listed(),
            "\xEF\xBB\xBF"
            "a.png\r\nb.PNG\r\n");
}

TEST_F(StampLibraryTest, TheFolderIsSearchedWhateverTheCaseOfLetters) {
  for (const char16_t* name : {u"C.png", u"a.png", u"B.png"}) putStamp(name);
  LoadStampLibrary();
  EXPECT_THAT(names(), ElementsAre(u"a", u"B", u"C"));
}

TEST_F(StampLibraryTest, FilesThatAreFoundKeepTheOrderInWhichTheSystemListsThem) {
  for (const char16_t* name : {u"z.png", u"_.png", u"[a].png", u"B.png"}) putStamp(name);
  const auto listing = platform::listFiles(session.stampsFolder, u".png");
  ASSERT_EQ(listing->front(), u"B.png") << "capital letters come before these signs";
  LoadStampLibrary();
  EXPECT_THAT(names(), ElementsAre(u"B", u"z", u"[a]", u"_"));
}

TEST_F(StampLibraryTest, AFolderThatCannotBeReadIsNotTakenForAnEmptyOne) {
  putStamp(u"a.png");
  standIn().refuseFileCall = [](platform::FileCall call) {
    return call == platform::FileCall::List;
  };
  LoadStampLibrary();
  EXPECT_THAT(names(), IsEmpty());
  EXPECT_EQ(platform::fileBytes(inStamps(u"stamps.lst")), std::nullopt);
  standIn().refuseFileCall = nullptr;
  LoadStampLibrary();
  EXPECT_THAT(names(), ElementsAre(u"a"));
}

TEST_F(StampLibraryTest, AListThatCannotBeOpenedIsNotTakenForNone) {
  putStamp(u"a.png");
  putList("a.png\r\n");
  platform::setOtherUse(inStamps(u"stamps.lst"), platform::OtherUse::Exclusive);
  LoadStampLibrary();
  EXPECT_THAT(names(), IsEmpty());
  platform::setOtherUse(inStamps(u"stamps.lst"), platform::OtherUse::Nobody);
  EXPECT_EQ(listed(), "a.png\r\n");
}

TEST_F(StampLibraryTest, AListThatCannotBeReadIsNotReplaced) {
  const std::string list(2 << 20, '\n');
  putStamp(u"a.png");
  putList(list);
  LoadStampLibrary();
  appendStamp(inStamps(u"a.png"), u"a", false);
  SaveStampList();
  EXPECT_EQ(listed(), list);
}

TEST_F(StampLibraryTest, FilesOfAListThatCannotBeReadAreNoOrphans) {
  putStamp(u"a.png");
  putList("a.png\r\n");
  platform::setOtherUse(inStamps(u"stamps.lst"), platform::OtherUse::Exclusive);
  LoadStampLibrary();
  EXPECT_THAT(ListStampFiles(true), IsEmpty());
  EXPECT_THAT(ListStampFiles(false), ElementsAre(inStamps(u"a.png")));
  platform::setOtherUse(inStamps(u"stamps.lst"), platform::OtherUse::Nobody);
  standIn().boxAnswers = {platform::BoxAnswer::Ok};
  standIn().shown.clear();
  ClearOrphanedStamps();
  EXPECT_EQ(standIn().boxes[0].text, u"No orphaned files found.");
  EXPECT_TRUE(platform::fileExists(inStamps(u"a.png")));
  EXPECT_THAT(names(), ElementsAre(u"Date", u"a"));
  EXPECT_THAT(standIn().shown, testing::Contains("stamp panel")) << "an open panel shows them";
}

TEST_F(StampLibraryTest, AFullDiskLeavesTheListAsItWas) {
  fillLibrary(3);
  const std::string before = listed();
  standIn().diskFree = 5;
  RemoveStamp(0);
  EXPECT_EQ(listed(), before);
  EXPECT_THAT(platform::namesIn(session.stampsFolder),
              testing::UnorderedElementsAre(u"1.png", u"2.png", u"3.png", u"stamps.lst"));
}

TEST_F(StampLibraryTest, AListThatCannotBeReplacedIsWrittenWhereItIs) {
  fillLibrary(2);
  standIn().refuseFileCall = [](platform::FileCall call) {
    return call == platform::FileCall::Replace;
  };
  RemoveStamp(0);
  EXPECT_EQ(listed(),
            "\xEF\xBB\xBF"
            "2.png\r\n");
}

TEST_F(StampLibraryTest, NamesAndPathsHaveTheirLimits) {
  const std::u16string longName(70, u'n');
  putStamp(longName + u".png");
  putList(std::string(70, 'n') + ".png\r\n" + std::string(300, 'x') + ".png\r\n");
  LoadStampLibrary();
  EXPECT_THAT(names(), ElementsAre(std::u16string(63, u'n')));
}

TEST_F(StampLibraryTest, AFoundFileIsNamedAsAListedOne) {
  const std::u16string longName = u"a.b." + std::u16string(70, u'n') + u".png";
  putStamp(longName);
  putStamp(u"one.two.three.png");
  LoadStampLibrary();
  EXPECT_THAT(names(), ElementsAre(u"a.b", u"one.two.three")) << "found";
  LoadStampLibrary();
  EXPECT_THAT(names(), ElementsAre(u"a.b", u"one.two.three")) << "listed";
}

TEST_F(StampLibraryTest, NamesOfAnyScriptGoThroughTheList) {
  const std::vector<std::u16string> all = {u"\u0141\u00F3d\u017A", u"\u0395\u03BB\u03BB",
                                           u"\u5370\u7AE0", u"\U0001F58B stylo"};
  for (const std::u16string& name : all) putStamp(name + u".png");
  LoadStampLibrary();
  ASSERT_THAT(names(), testing::UnorderedElementsAreArray(all));
  const std::vector<std::u16string> found = names();
  LoadStampLibrary();
  EXPECT_EQ(names(), found);
  EXPECT_NE(listed().find("\xF0\x9F\x96\x8B stylo.png\r\n"), std::string::npos);
}

TEST_F(StampLibraryTest, LinesLongerThanAnyPathDropOutWhole) {
  putStamp(u"a.png");
  putStamp(u"b.png");
  std::string list;
  for (const std::size_t length : {259u, 260u, 261u, 519u, 520u, 2000u}) {
    list += std::string(length, 'x') + "a.png\r\n";
  }
  putList(list + "b.png" + std::string(400, ' ') + "\r\n");
  LoadStampLibrary();
  EXPECT_THAT(names(), ElementsAre(u"b"));
}

TEST_F(StampLibraryTest, LoadingReadsSizesAndDecodesNothing) {
  fillLibrary(20);
  EXPECT_EQ(standIn().picturesDecoded, 0);
  EXPECT_EQ(session.stampLibrary.size(), 20u);
}

TEST_F(StampLibraryTest, AViewerNeverWritesTheList) {
  session.viewerRole = true;
  putStamp(u"a.png");
  LoadStampLibrary();
  EXPECT_THAT(names(), ElementsAre(u"a"));
  EXPECT_EQ(platform::fileBytes(inStamps(u"stamps.lst")), std::nullopt);
}

TEST_F(StampLibraryTest, DatesHaveNoLeadingZeros) {
  EXPECT_EQ(dateStampText(20260309), u"3/9/2026");
  EXPECT_EQ(dateStampText(20261231), u"12/31/2026");
}

TEST_F(StampLibraryTest, OpeningThePanelDrawsTodaysDate) {
  standIn().date = 20260309;
  putStamp(u"__date__.png", 1, 1);
  LoadStampLibrary();
  refreshStampLibrary();
  ASSERT_THAT(names(), ElementsAre(u"Date"));
  const platform::SharedPicture shortDate = stampBitmap(0);
  EXPECT_GT(shortDate->width, 100);
  standIn().date = 20261231;
  refreshStampLibrary();
  EXPECT_GT(stampBitmap(0)->width, shortDate->width) << "more digits take more room";
  EXPECT_EQ(session.stampLibrary[0].width, stampBitmap(0)->width);
}

TEST_F(StampLibraryTest, WhereTodaysDateCannotBeWrittenNoOtherIsOffered) {
  standIn().date = 20260309;
  refreshStampLibrary();
  ASSERT_THAT(names(), ElementsAre(u"Date"));
  Placement& placement = placeStamp(0);
  standIn().date = 20260310;
  standIn().diskFree = 100;
  refreshStampLibrary();
  EXPECT_THAT(names(), IsEmpty());
  EXPECT_FALSE(platform::fileExists(inStamps(u"__date__.png"))) << "nothing half-written stays";
  EXPECT_TRUE(placement.image) << "a stamp on a page stays";
  standIn().diskFree.reset();
  refreshStampLibrary();
  EXPECT_THAT(names(), ElementsAre(u"Date"));
}

TEST_F(StampLibraryTest, APendingDateStampKeepsTheDayItWasPlaced) {
  standIn().date = 20260309;
  refreshStampLibrary();
  Placement& placement = placeStamp(0);
  const platform::SharedPicture before = stampBitmap(0);
  standIn().date = 20261231;
  refreshStampLibrary();
  EXPECT_EQ(placement.stampIndex, -1);
  ASSERT_TRUE(placement.image);
  EXPECT_EQ(placement.image->pixels, before->pixels);
}

TEST_F(StampLibraryTest, PendingStampsFollowTheirEntryThroughAReload) {
  putStamp(u"a.png");
  putStamp(u"b.png", 10, 10, 0xFF00FF00);
  putList("a.png\r\nb.png\r\n");
  LoadStampLibrary();
  Placement& placement = placeStamp(1);
  putList("b.png\r\n");
  refreshStampLibrary();
  EXPECT_THAT(names(), ElementsAre(u"Date", u"b"));
  EXPECT_EQ(placement.stampIndex, 1);
  EXPECT_FALSE(placement.image);
}

TEST_F(StampLibraryTest, APendingStampWhoseFileVanishedKeepsWhatItShowed) {
  putStamp(u"a.png", 10, 10, 0xFF00FF00);
  putList("a.png\r\n");
  LoadStampLibrary();
  Placement& placement = placeStamp(0);
  ASSERT_TRUE(stampBitmap(0));
  platform::deleteFile(inStamps(u"a.png"));
  refreshStampLibrary();
  EXPECT_THAT(names(), ElementsAre(u"Date"));
  EXPECT_EQ(placement.stampIndex, -1);
  ASSERT_TRUE(placement.image);
  EXPECT_EQ(placement.image->pixels.front(), 0xFF00FF00u);
}

TEST_F(StampLibraryTest, APendingStampKeepsWhatItShowedWhileAnotherProgramHasItsFile) {
  putStamp(u"a.png", 10, 10, 0xFFFF0000);
  putStamp(u"b.png", 10, 10, 0xFF00FF00);
  putList("a.png\r\nb.png\r\n");
  LoadStampLibrary();
  placeStamp(0);
  placeStamp(1);
  ASSERT_TRUE(stampBitmap(0));
  ASSERT_TRUE(makeThumbnail(session.stampLibrary[1])) << "drawn in the panel alone";
  for (const char16_t* name : {u"a.png", u"b.png"}) {
    platform::setOtherUse(inStamps(name), platform::OtherUse::Exclusive);
  }
  refreshStampLibrary();
  EXPECT_THAT(names(), ElementsAre(u"Date"));
  const std::vector<Placement>& stamps = session.placements[0];
  for (const Placement& stamp : stamps) {
    EXPECT_EQ(stamp.stampIndex, -1);
    ASSERT_TRUE(stamp.image);
  }
  EXPECT_EQ(stamps[0].image->pixels.front(), 0xFFFF0000u);
  EXPECT_EQ(stamps[1].image->pixels.front(), 0xFF00FF00u);
}

TEST_F(StampLibraryTest, PendingStampsFollowTheirEntryPastAFileThatAnotherProgramHas) {
  fillLibrary(3);
  placeStamp(2);
  platform::setOtherUse(inStamps(u"1.png"), platform::OtherUse::Exclusive);
  refreshStampLibrary();
  ASSERT_THAT(names(), ElementsAre(u"Date", u"2", u"3"));
  EXPECT_EQ(session.placements[0].front().stampIndex, 2);
  EXPECT_FALSE(session.placements[0].front().image);
}

TEST_F(StampLibraryTest, APendingStampWithoutAnyPictureNeverTakesAnother) {
  refreshStampLibrary();
  putStamp(u"a.png");
  putList("a.png\r\n");
  LoadStampLibrary();
  ASSERT_THAT(names(), ElementsAre(u"Date", u"a"));
  placeStamp(0);
  platform::setOtherUse(inStamps(u"__date__.png"), platform::OtherUse::Exclusive);
  refreshStampLibrary();
  ASSERT_THAT(names(), ElementsAre(u"a"));
  EXPECT_EQ(session.placements[0].front().stampIndex, -1);
  EXPECT_FALSE(session.placements[0].front().image);
}

TEST_F(StampLibraryTest, StampsOfOneEntryShareThePictureThatTheyKeep) {
  refreshStampLibrary();
  placeStamp(0);
  placeStamp(0);
  refreshStampLibrary();
  const std::vector<Placement>& stamps = session.placements[0];
  ASSERT_TRUE(stamps[0].image);
  EXPECT_EQ(stamps[0].image, stamps[1].image);
}

TEST_F(StampLibraryTest, APendingStampDoesNotStandOnAFileThatWasDamaged) {
  putStamp(u"a.png", 10, 10, 0xFF00FF00);
  putStamp(u"b.png");
  putList("a.png\r\nb.png\r\n");
  LoadStampLibrary();
  placeStamp(0);
  placeStamp(1);
  ASSERT_TRUE(stampBitmap(0));
  const std::string whole = plainPng(10, 10, 0xFF000000);
  platform::putFile(inStamps(u"a.png"), whole.substr(0, whole.size() - 40));
  refreshStampLibrary();
  EXPECT_THAT(names(), ElementsAre(u"Date", u"b"));
  const std::vector<Placement>& stamps = session.placements[0];
  EXPECT_EQ(stamps[0].stampIndex, -1);
  ASSERT_TRUE(stamps[0].image);
  EXPECT_EQ(stamps[0].image->pixels.front(), 0xFF00FF00u);
  EXPECT_EQ(stamps[1].stampIndex, 1);
}

TEST_F(StampLibraryTest, OpeningThePanelDecodesNothing) {
  fillLibrary(20);
  refreshStampLibrary();
  EXPECT_EQ(standIn().picturesDecoded, 0);
  EXPECT_EQ(session.stampLibrary.size(), 21u);
}

TEST_F(StampLibraryTest, AnEntryThatCannotBeDecodedGoesButStaysInTheList) {
  fillLibrary(3);
  placeStamp(1);
  placeStamp(2);
  ASSERT_TRUE(stampBitmap(1));
  platform::putFile(inStamps(u"2.png"), std::string("no picture"));
  const std::string list = listed();
  standIn().shown.clear();
  dropUndecodableStamp(1);
  EXPECT_THAT(names(), ElementsAre(u"1", u"3"));
  EXPECT_EQ(listed(), list);
  EXPECT_THAT(standIn().shown, ElementsAre("stamp panel"));
  const std::vector<Placement>& stamps = session.placements[0];
  EXPECT_EQ(stamps[0].stampIndex, -1);
  EXPECT_TRUE(stamps[0].image);
  EXPECT_EQ(stamps[1].stampIndex, 1);
  dropUndecodableStamp(2);
  EXPECT_EQ(session.stampLibrary.size(), 2u) << "there is no such entry";
}

TEST_F(StampLibraryTest, LargePicturesAreDrawnFromASmallerCopy) {
  putStamp(u"a.png", 3000, 1500);
  putList("a.png\r\n");
  LoadStampLibrary();
  const platform::SharedPicture drawn = stampBitmap(0);
  EXPECT_LE(drawn->pixels.size(), 2u << 20);
  EXPECT_NEAR(drawn->width, 2.0 * drawn->height, 1.0);
  EXPECT_EQ(stampBitmap(0), drawn) << "made once";
  EXPECT_EQ(wholeStampPicture(0)->width, 3000);
}

TEST_F(StampLibraryTest, AStampWhoseFileVanishedIsDrawnFromItsThumbnail) {
  fillLibrary(2);
  ASSERT_TRUE(makeThumbnail(session.stampLibrary[0]));
  for (const char16_t* name : {u"1.png", u"2.png"}) platform::deleteFile(inStamps(name));
  EXPECT_EQ(stampBitmap(0), session.stampLibrary[0].thumbnail);
  EXPECT_EQ(keptStampPicture(session.stampLibrary[0]), stampBitmap(0));
  EXPECT_FALSE(stampBitmap(1));
}

TEST_F(StampLibraryTest, PicturesOfDocumentsAreDrawnFromASmallerCopyWhenTheyAreLarge) {
  const auto small = std::make_shared<platform::Picture>(plainPicture(1000, 500, 0xFF336699));
  EXPECT_EQ(quickToDraw(small), small);
  const auto large = std::make_shared<platform::Picture>(plainPicture(4000, 2000, 0xFF336699));
  const platform::SharedPicture copy = quickToDraw(large);
  EXPECT_EQ(copy->width, 2048);
  EXPECT_EQ(copy->height, 1024);
  EXPECT_EQ(copy->pixels.front(), 0xFF336699u);
}

TEST_F(StampLibraryTest, ARemovedStampStaysOnThePageAndOnTheDisk) {
  fillLibrary(3);
  placeStamp(1);
  Placement other;
  other.stampIndex = 2;
  session.placements[4].push_back(other);
  RemoveStamp(1);
  EXPECT_THAT(names(), ElementsAre(u"1", u"3"));
  const Placement& placement = session.placements[0].front();
  EXPECT_EQ(placement.stampIndex, -1);
  ASSERT_TRUE(placement.image);
  EXPECT_EQ(placement.image->width, 40);
  EXPECT_EQ(session.placements[4].front().stampIndex, 1);
  EXPECT_FALSE(session.placements[4].front().image);
  EXPECT_EQ(listed(),
            "\xEF\xBB\xBF"
            "1.png\r\n3.png\r\n");
  EXPECT_TRUE(platform::fileExists(inStamps(u"2.png")));
  EXPECT_THAT(ListStampFiles(true), ElementsAre(inStamps(u"2.png")));
}

TEST_F(StampLibraryTest, WrittenStampsFollowARemovalAsPendingOnesDo) {
  fillLibrary(3);
  placeStamp(1).annotIndex = 0;
  placeStamp(2).annotIndex = 1;
  placeStamp(0).annotIndex = 2;
  RemoveStamp(1);
  const std::vector<Placement>& stamps = session.placements[0];
  EXPECT_EQ(stamps[0].stampIndex, -1);
  EXPECT_TRUE(stamps[0].image);
  EXPECT_EQ(stamps[1].stampIndex, 1);
  EXPECT_EQ(stamps[2].stampIndex, 0);
}

TEST_F(StampLibraryTest, TextDropsHaveNothingToDoWithTheLibrary) {
  fillLibrary(2);
  Placement text;
  text.kind = PlacementKind::TextDrop;
  session.placements[0].push_back(text);
  RemoveStamp(0);
  EXPECT_EQ(session.placements[0].front().stampIndex, 0);
  EXPECT_FALSE(session.placements[0].front().image);
}

TEST_F(StampLibraryTest, SystemStampsAndMissingRowsCannotBeRemoved) {
  putStamp(u"__date__.png");
  fillLibrary(1);
  RemoveStamp(0);
  RemoveStamp(-1);
  RemoveStamp(2);
  EXPECT_THAT(names(), ElementsAre(u"Date", u"1"));
}

TEST_F(StampLibraryTest, FilesAreListedWithoutTheDateStamp) {
  putStamp(u"__date__.png");
  fillLibrary(2);
  putStamp(u"orphan.png");
  EXPECT_THAT(ListStampFiles(false),
              ElementsAre(inStamps(u"1.png"), inStamps(u"2.png"), inStamps(u"orphan.png")));
  EXPECT_THAT(ListStampFiles(true), ElementsAre(inStamps(u"orphan.png")));
}

TEST_F(StampLibraryTest, WithoutOrphansItSaysSo) {
  fillLibrary(1);
  standIn().boxAnswers = {platform::BoxAnswer::Ok};
  ClearOrphanedStamps();
  ASSERT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(standIn().boxes[0].text, u"No orphaned files found.");
  EXPECT_EQ(standIn().boxes[0].title, u"Clear Orphaned Files");
}

TEST_F(StampLibraryTest, OrphansAreDeletedAfterAQuestion) {
  fillLibrary(1);
  putStamp(u"x.png");
  putStamp(u"y.png");
  platform::setOtherUse(inStamps(u"y.png"), platform::OtherUse::Exclusive);
  standIn().boxAnswers = {platform::BoxAnswer::Yes, platform::BoxAnswer::Ok};
  ClearOrphanedStamps();
  ASSERT_EQ(standIn().boxes.size(), 2u);
  EXPECT_EQ(standIn().boxes[0].text, u"2 file(s) will be deleted. Continue?");
  EXPECT_EQ(standIn().boxes[0].buttons, platform::BoxButtons::YesNo);
  EXPECT_EQ(standIn().boxes[1].text, u"1 file(s) deleted.");
  EXPECT_FALSE(platform::fileExists(inStamps(u"x.png")));
  EXPECT_TRUE(platform::fileExists(inStamps(u"1.png")));
}

TEST_F(StampLibraryTest, OrphansStayWhenTheAnswerIsNo) {
  LoadStampLibrary();
  putStamp(u"x.png");
  standIn().boxAnswers = {platform::BoxAnswer::No};
  ClearOrphanedStamps();
  EXPECT_TRUE(platform::fileExists(inStamps(u"x.png")));
}

TEST_F(StampLibraryTest, DeletingAllLeavesTheDateStampAndAnEmptyList) {
  putStamp(u"__date__.png");
  fillLibrary(2);
  putStamp(u"orphan.png");
  placeStamp(1);
  placeStamp(-1).image = std::make_shared<platform::Picture>(plainPicture(1, 1, 0));
  Placement written;
  written.annotIndex = 3;
  written.stampIndex = 1;
  session.placements[2].push_back(written);
  session.selectedPlacementPage = 0;
  session.selectedPlacementIndex = 0;
  DeleteAllStamps();
  EXPECT_THAT(names(), ElementsAre(u"Date"));
  EXPECT_EQ(listed(), "\xEF\xBB\xBF");
  EXPECT_THAT(ListStampFiles(false), IsEmpty());
  ASSERT_EQ(session.placements[0].size(), 1u) << "the one that stood on nothing but the library";
  EXPECT_TRUE(session.placements[0].front().image);
  EXPECT_EQ(session.placements[2].size(), 1u);
  EXPECT_EQ(session.selectedPlacementPage, -1);
  EXPECT_TRUE(standIn().boxes.empty());
}

}  // namespace
}  // namespace quillmere::test
