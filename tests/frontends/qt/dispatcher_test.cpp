#include "frontends/qt/dispatcher.h"

#include <gtest/gtest.h>

#include <QTimer>

#include "base/runtime_error.h"
#include "frontends/qt/key_codes.h"
#include "frontends/qt/text.h"

namespace tarvo::qt {
namespace {

TEST(DispatcherTest, AWaitThatIsOverAlreadyReturnsAtOnce) {
  Dispatcher dispatcher;
  bool asked = false;
  dispatcher.Wait([&] { return asked = true; });
  EXPECT_TRUE(asked);
}

TEST(DispatcherTest, AnErrorEndsEveryWait) {
  Dispatcher dispatcher;
  int ended = 0;
  QTimer::singleShot(0, [&] {
    dispatcher.Run([&] {
      QTimer::singleShot(0, [&] { dispatcher.Run([] { throw RuntimeError(kOverflow); }); });
      dispatcher.Wait([] { return false; });
      ++ended;
      dispatcher.ThrowIfEnding();
      ++ended;
    });
  });
  dispatcher.Wait([] { return false; });
  EXPECT_EQ(ended, 1);
  EXPECT_EQ(dispatcher.Failure(), RuntimeError(kOverflow).StandardMessage());
}

TEST(KeyCodesTest, KeysHaveTheirClassicCodes) {
  EXPECT_EQ(ClassicKeyCode(Qt::Key_F1, false), 112);
  EXPECT_EQ(ClassicKeyCode(Qt::Key_F12, false), 123);
  EXPECT_EQ(ClassicKeyCode(Qt::Key_Return, false), 13);
  EXPECT_EQ(ClassicKeyCode(Qt::Key_A, false), 65);
  EXPECT_EQ(ClassicKeyCode(Qt::Key_7, false), 55);
  EXPECT_EQ(ClassicKeyCode(Qt::Key_7, true), 103);
  EXPECT_EQ(ClassicKeyCode(Qt::Key_Delete, false), 46);
  EXPECT_EQ(ClassicKeyCode(Qt::Key_LaunchMail, false), 0);
}

TEST(DrawnTextTest, BytesThatAreNoTextAreDrawnAsReplacements) {
  EXPECT_EQ(ToText("a\xff"), QString("a") + QChar(0xfffd));
}

TEST(DrawnTextTest, AToolTipThatLooksLikeMarkupIsShownLiterally) {
  EXPECT_TRUE(ToToolTip("<b>x</b>").contains("&lt;b&gt;"));
  EXPECT_EQ(ToToolTip("x & y"), "x & y");
}

}  // namespace
}  // namespace tarvo::qt
