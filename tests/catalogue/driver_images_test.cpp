#include "catalogue/driver_list.h"
#include "support/list_run.h"

namespace tarvo::test {
namespace {

// The directory order is the system's, so these tests make the drivers one at a time where order
// matters: what they assert holds for both orders, or they look up who came first.
class TheDriverImages : public ListRun {
 protected:
  std::string LargeBytes(const ListItem& item) { return Bytes(window.imlListView, item.Icon); }
  std::string SmallBytes(const ListItem& item) {
    return Bytes(window.imlSListView, item.SmallIcon);
  }

  // The drivers in the order in which the folder lists them.
  std::vector<ListItem*> InFolderOrder() {
    std::vector<ListItem*> items;
    for (const FolderEntry& entry : platform.Entries(folder / InData("Drivers"))) {
      items.push_back(&Item(entry.name));
    }
    return items;
  }

 private:
  static std::string Bytes(const ImageList& list, int index) {
    const PicturePointer picture = list.At(index);
    return picture ? picture->bytes : "none";
  }
};

TEST_F(TheDriverImages, ComeFromDriverIcoForBothSizesInAnyLetterCase) {
  DriverFile("Meter/DRIVER.ico", IconFile(7));
  Update();
  EXPECT_EQ(LargeBytes(Item("Meter")), IconFile(7));
  EXPECT_EQ(SmallBytes(Item("Meter")), IconFile(7));
}

TEST_F(TheDriverImages, ComeFromLargeAndSmallWhenDriverIcoIsMissing) {
  DriverFile("Meter/large.ico", IconFile(1));
  DriverFile("Meter/SMALL.bmp", BitmapFile(2));
  Update();
  EXPECT_EQ(LargeBytes(Item("Meter")), IconFile(1));
  EXPECT_EQ(SmallBytes(Item("Meter")), BitmapFile(2));
}

TEST_F(TheDriverImages, ComeFromLargeAndSmallWhenDriverIcoIsBroken) {
  DriverFile("Meter/driver.ICO", "not an icon");
  DriverFile("Meter/Large.ICO", IconFile(1));
  DriverFile("Meter/Small.BMP", BitmapFile(2));
  Update();
  EXPECT_EQ(LargeBytes(Item("Meter")), IconFile(1));
  EXPECT_EQ(SmallBytes(Item("Meter")), BitmapFile(2));
}

TEST_F(TheDriverImages, OfADriverWithoutAnyAreThoseOfTheNext) {
  Driver("A");
  Driver("B");
  Update();
  EXPECT_EQ(LargeBytes(Item("A")), "none");
  EXPECT_EQ(Item("A").Icon, 2);
  EXPECT_EQ(Item("B").Icon, 2) << "the index was left to the next driver";

  ListItem* first = InFolderOrder()[0];
  ListItem* second = InFolderOrder()[1];
  const std::string name = second->Text;
  DriverFile(name + "/driver.ICO", IconFile(5));
  const std::string firstName = first->Text;
  Update();
  ASSERT_EQ(InFolderOrder()[0]->Text, firstName);
  EXPECT_EQ(LargeBytes(Item(firstName)), IconFile(5));
  EXPECT_EQ(LargeBytes(Item(name)), IconFile(5));
}

TEST_F(TheDriverImages, OfADriverWithALargeIconOnlyGiveWayToTheNextOnes) {
  Driver("A");
  Driver("B");
  Update();
  const std::string first = InFolderOrder()[0]->Text;
  const std::string second = InFolderOrder()[1]->Text;
  DriverFile(first + "/Large.ICO", IconFile(1));
  DriverFile(second + "/driver.ICO", IconFile(2));
  Update();
  ASSERT_EQ(InFolderOrder()[0]->Text, first);
  // Small.BMP failed, so the counter stayed and the next driver inserted its image before the first
  // one's.
  EXPECT_EQ(LargeBytes(Item(first)), IconFile(2));
  EXPECT_EQ(SmallBytes(Item(first)), IconFile(2));
  EXPECT_EQ(LargeBytes(Item(second)), IconFile(2));
  EXPECT_EQ(window.imlListView.At(3)->bytes, IconFile(1));
}

TEST_F(TheDriverImages, ShareTheNextIndexAfterAnyErrorOfADriver) {
  Driver("A");
  Driver("B");
  Update();
  const std::string first = InFolderOrder()[0]->Text;
  const std::string second = InFolderOrder()[1]->Text;
  DriverFile(first + "/driver.ICO", IconFile(1));
  DriverFile(second + "/driver.ICO", IconFile(2));
  for (int i = 0; i < 102; ++i) Driver(first + "/" + std::to_string(i));
  Update();
  ASSERT_EQ(InFolderOrder()[0]->Text, first);
  EXPECT_EQ(LargeBytes(Item(first)), IconFile(2)) << "counting failed after the images were there";
  EXPECT_EQ(LargeBytes(Item(second)), IconFile(2));
}

TEST_F(TheDriverImages, BeginWithTheAddPictureAndStayAttached) {
  Update();
  EXPECT_EQ(window.lvListView.Icons, &window.imlListView);
  EXPECT_EQ(window.lvListView.SmallIcons, &window.imlSListView);
  EXPECT_EQ(window.imlListView.At(1), window.imgNew.Picture);
  EXPECT_EQ(window.imlSListView.At(1), window.imgSNew.Picture);
  Update();
  EXPECT_EQ(window.imlListView.Count(), 1);
}

TEST_F(TheDriverImages, ShareTheNextIndexAfterATildeInTheName) {
  Driver("A~");
  Driver("B~");
  Update();
  const std::string first = InFolderOrder()[0]->Text;
  const std::string second = InFolderOrder()[1]->Text;
  DriverFile(first + "/driver.ICO", IconFile(1));
  DriverFile(second + "/driver.ICO", IconFile(2));
  Update();
  ASSERT_EQ(InFolderOrder()[0]->Text, first);
  EXPECT_EQ(LargeBytes(Item(first)), IconFile(2)) << "the version records have no such key";
}

TEST_F(TheDriverImages, ComeFromLargeAndSmallWhenDriverIcoIsHuge) {
  DriverFile("Meter/driver.ICO", IconFile() + std::string(kMaxPictureBytes, '\0'));
  DriverFile("Meter/Large.ICO", IconFile(1));
  DriverFile("Meter/Small.BMP", BitmapFile(2));
  Update();
  EXPECT_EQ(LargeBytes(Item("Meter")), IconFile(1));
}

TEST_F(TheDriverImages, OfTwoDriversThatDifferInLetterCaseGoToTheOneListedFirst) {
  DriverFile("meter/driver.ICO", IconFile(1));
  DriverFile("Meter/driver.ICO", IconFile(2));
  Update();
  // One of the two keys is taken, so the list holds one of them; neither spoils the other.
  EXPECT_EQ(window.lvListView.Count(), 2);
  EXPECT_EQ(window.imlListView.Count(), 2);
}

}  // namespace
}  // namespace tarvo::test
