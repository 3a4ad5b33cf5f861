#include "forms/list_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "error_of.h"

namespace tarvo::test {
namespace {

using ::testing::ElementsAre;

std::vector<std::string> Texts(const ListView& list) {
  std::vector<std::string> texts;
  for (int i = 0; i < list.Count(); ++i) texts.push_back(list.ItemAt(i).Text);
  return texts;
}

TEST(ListView, AddsItemsAtTheEnd) {
  ListView list;
  const ListItem& item = list.Add("b", "B text", 2, 3);
  list.Add("a", "A text", 0, 0);
  EXPECT_THAT(Texts(list), ElementsAre("B text", "A text"));
  EXPECT_EQ(item.Key, "b");
  EXPECT_EQ(item.Icon, 2);
  EXPECT_EQ(item.SmallIcon, 3);
  EXPECT_FALSE(item.StandsFirst);
}

TEST(ListView, RefusesAKeyThatIsTakenInAnyLetterCase) {
  ListView list;
  list.Add("Mètre", "one", 0, 0);
  const unsigned generation = list.Generation();
  EXPECT_EQ(ErrorOf([&] { list.Add("MÈTRE", "two", 0, 0); }), 35602);
  EXPECT_THAT(Texts(list), ElementsAre("one"));
  EXPECT_EQ(list.Generation(), generation);
  list.Add("Metre", "two", 0, 0);
  EXPECT_EQ(list.Count(), 2);
}

TEST(ListView, SortsByNameWithoutRegardToLetterCase) {
  ListView list;
  for (const char* name : {"meter", "Zebra", "éclair", "Alpha", "_x", "beta", "Beta 2"}) {
    list.Add(name, name, 0, 0);
  }
  list.Sort();
  EXPECT_THAT(Texts(list),
              ElementsAre("_x", "Alpha", "beta", "Beta 2", "meter", "Zebra", "éclair"));
}

TEST(ListView, SortsNamesThatDifferInLetterCaseOnlyTheSameWayEachTime) {
  for (const bool turned : {false, true}) {
    ListView list;
    list.Add(turned ? "2" : "1", turned ? "METER" : "meter", 0, 0);
    list.Add(turned ? "1" : "2", turned ? "meter" : "METER", 0, 0);
    list.Sort();
    EXPECT_THAT(Texts(list), ElementsAre("METER", "meter"));
  }
}

TEST(ListView, SortsItemsThatStandFirstBeforeAllOthers) {
  ListView list;
  list.Add("!", "! sorts early", 0, 0);
  list.Add("Add", "(Add Driver)", 0, 0).StandsFirst = true;
  list.Add("#", "#", 0, 0);
  list.Sort();
  EXPECT_THAT(Texts(list), ElementsAre("(Add Driver)", "! sorts early", "#"));
}

TEST(ListView, AddsInOrderOnceItIsSorted) {
  ListView list;
  list.Add("Add", "(Add Driver)", 0, 0).StandsFirst = true;
  list.Add("m", "m", 0, 0);
  EXPECT_FALSE(list.Sorted());
  list.Sort();
  EXPECT_TRUE(list.Sorted());
  for (const char* name : {"z", "A", "!", "n"}) list.Add(name, name, 0, 0);
  EXPECT_THAT(Texts(list), ElementsAre("(Add Driver)", "!", "A", "m", "n", "z"));
}

TEST(ListView, ItemsKeepTheirAddressWhateverIsAddedOrSorted) {
  ListView list;
  ListItem& first = list.Add("m", "m", 0, 0);
  for (int i = 0; i < 100; ++i) list.Add(std::to_string(i), std::to_string(i), 0, 0);
  list.Sort();
  EXPECT_EQ(first.Text, "m");
  EXPECT_EQ(list.PositionOf(first), 100);
  EXPECT_EQ(&list.ItemAt(100), &first);
}

TEST(ListView, KnowsThePositionOfItsOwnItemsOnly) {
  ListView list;
  list.Add("a", "a", 0, 0);
  const ListItem stranger;
  EXPECT_EQ(list.PositionOf(stranger), -1);
}

TEST(ListView, SelectsAnItemUntilItIsCleared) {
  ListView list;
  EXPECT_EQ(list.SelectedItem(), nullptr);
  ListItem& item = list.Add("b", "b", 0, 0);
  list.Select(&item);
  list.Add("a", "a", 0, 0);
  list.Sort();
  EXPECT_EQ(list.SelectedItem(), &item);
  list.Clear();
  EXPECT_EQ(list.SelectedItem(), nullptr);
  EXPECT_EQ(list.Count(), 0);
  list.Add("b", "again", 0, 0);
  EXPECT_THAT(Texts(list), ElementsAre("again"));
}

TEST(ListView, SelectingByProgramRunsNoHandler) {
  ListView list;
  int clicks = 0;
  list.ItemClick = [&](ListItem&) { ++clicks; };
  list.Select(&list.Add("a", "a", 0, 0));
  EXPECT_EQ(clicks, 0);
}

TEST(ListView, GrowsItsGenerationWithEveryChange) {
  ListView list;
  unsigned last = list.Generation();
  const auto grown = [&] { return std::exchange(last, list.Generation()) < list.Generation(); };
  list.Add("b", "b", 0, 0);
  EXPECT_TRUE(grown());
  list.Sort();
  EXPECT_TRUE(grown());
  list.Touch();
  EXPECT_TRUE(grown());
  list.Clear();
  EXPECT_TRUE(grown());
  list.SetView(kDetails);
  EXPECT_FALSE(grown());
}

TEST(ListView, HasTheFourViewsOnly) {
  ListView list;
  EXPECT_EQ(list.View(), kLargeIcons);
  for (const int view : {3, 0, 1, 2}) {
    list.SetView(view);
    EXPECT_EQ(list.View(), view);
  }
  for (const int view : {-1, 4, 7}) {
    EXPECT_EQ(ErrorOf([&] { list.SetView(view); }), 380) << view;
    EXPECT_EQ(list.View(), kList);
  }
}

TEST(ListView, HasNoNegativeHeight) {
  ListView list;
  list.SetHeight(100);
  EXPECT_EQ(ErrorOf([&] { list.SetHeight(-0.5F); }), 380);
  EXPECT_EQ(list.Place.Height, 100);
  list.SetHeight(0);
  EXPECT_EQ(list.Place.Height, 0);
}

TEST(ImageList, NumbersItsPicturesFromOne) {
  ImageList images;
  images.Add(1, "", OwnIcon("a"));
  images.Add(2, "", OwnIcon("b"));
  EXPECT_EQ(images.Count(), 2);
  EXPECT_EQ(images.At(1)->icon, "a");
  EXPECT_EQ(images.At(2)->icon, "b");
  for (const int index : {0, 3, -1}) EXPECT_EQ(images.At(index), nullptr);
}

TEST(ImageList, InsertingMovesWhatFollowsUpByOne) {
  ImageList images;
  images.Add(1, "a", OwnIcon("a"));
  images.Add(2, "b", OwnIcon("b"));
  images.Add(2, "c", OwnIcon("c"));
  EXPECT_EQ(images.At(1)->icon, "a");
  EXPECT_EQ(images.At(2)->icon, "c");
  EXPECT_EQ(images.At(3)->icon, "b");
}

TEST(ImageList, RefusesAnIndexThatWouldLeaveAGap) {
  ImageList images;
  images.Add(1, "", OwnIcon("a"));
  for (const int index : {0, 3, -1}) {
    EXPECT_EQ(ErrorOf([&] { images.Add(index, "", OwnIcon("b")); }), 35600) << index;
  }
  EXPECT_EQ(images.Count(), 1);
}

TEST(ImageList, RefusesAKeyThatIsTakenInAnyLetterCase) {
  ImageList images;
  images.Add(1, "Meter", OwnIcon("a"));
  EXPECT_EQ(ErrorOf([&] { images.Add(2, "METER", OwnIcon("b")); }), 35602);
  EXPECT_EQ(images.Count(), 1);
  images.Add(1, "", OwnIcon("c"));
  images.Add(1, "", OwnIcon("d"));
  EXPECT_EQ(images.Count(), 3) << "pictures without a key do not collide";
  images.Clear();
  images.Add(1, "meter", OwnIcon("e"));
  EXPECT_EQ(images.Count(), 1);
}

}  // namespace
}  // namespace tarvo::test
