#include "forms/front_end.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "error_of.h"
#include "forms/null_front_end.h"

namespace tarvo::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Log = std::vector<std::string>;

// Notes its handlers and does in each of them what the test says.
class ScriptedForm : public Form {
 public:
  ScriptedForm(std::string name, Log& log) : Form(std::move(name), ""), log_(log) {}

  void Form_Load() override { Run("load", onLoad); }
  void Form_Unload() override { Run("unload", onUnload); }
  void Form_Activate() override { Run("activate", onActivate); }
  void Form_Resize() override { Run("resize", onResize); }

  std::function<void()> onLoad, onUnload, onActivate, onResize;

 private:
  void Run(const std::string& handler, const std::function<void()>& action) {
    log_.push_back(Name + " " + handler);
    if (action) action();
  }

  Log& log_;
};

class LoggingFrontEnd : public NullFrontEnd {
 public:
  explicit LoggingFrontEnd(Log& log) : log_(log) {}

  void Repaint(Form& form) override { log_.push_back(form.Name + " painted"); }

  std::function<void()> onShow;
  std::vector<int> pointers;

 protected:
  void ShowWindow(Form& form) override {
    log_.push_back(form.Name + " shown");
    if (onShow) onShow();
  }
  void RunModally(Form& form, Form& owner) override {
    log_.push_back(form.Name + " modal over " + owner.Name);
    Unload(form);
  }
  void CloseWindow(Form& form) override { log_.push_back(form.Name + " closed"); }
  void PointerChanged(int pointer) override { pointers.push_back(pointer); }

 private:
  Log& log_;
};

class FrontEndTest : public ::testing::Test {
 protected:
  // What has happened since the last time.
  Log Happened() { return std::exchange(log, {}); }

  Log log;
  LoggingFrontEnd frontEnd{log};
  ScriptedForm a{"a", log};
  ScriptedForm b{"b", log};
  ScriptedForm c{"c", log};
};

TEST_F(FrontEndTest, LoadsAWindowOnceWithoutShowingIt) {
  frontEnd.Load(a);
  frontEnd.Load(a);
  EXPECT_THAT(Happened(), ElementsAre("a load"));
  EXPECT_TRUE(frontEnd.IsLoaded(a));
  EXPECT_FALSE(a.Visible);
}

TEST_F(FrontEndTest, HasAWindowLoadedWhileItsLoadHandlerRuns) {
  bool loaded = false;
  a.onLoad = [&] { loaded = frontEnd.IsLoaded(a); };
  frontEnd.Load(a);
  EXPECT_TRUE(loaded);
}

TEST_F(FrontEndTest, TakesAWindowOutWhoseLoadHandlerFails) {
  a.onLoad = [] { throw RuntimeError(76); };
  EXPECT_EQ(ErrorOf([&] { frontEnd.Load(a); }), 76);
  EXPECT_FALSE(frontEnd.IsLoaded(a));
  EXPECT_THAT(frontEnd.LoadedForms(), IsEmpty());
  EXPECT_THAT(Happened(), ElementsAre("a load", "a closed")) << "without its unload handler";
  a.onLoad = nullptr;
  frontEnd.Load(a);
  EXPECT_TRUE(frontEnd.IsLoaded(a));
}

TEST_F(FrontEndTest, TakesAWindowOffTheScreenThatIsShownBeforeItsLoadHandlerFails) {
  a.onLoad = [&] {
    frontEnd.Show(a);
    throw RuntimeError(5);
  };
  EXPECT_EQ(ErrorOf([&] { frontEnd.Show(a); }), 5);
  EXPECT_FALSE(a.Visible);
  EXPECT_EQ(Happened().back(), "a closed");
  a.onLoad = nullptr;
  frontEnd.Show(a);
  EXPECT_THAT(Happened(), ElementsAre("a load", "a shown", "a resize", "a activate", "a painted"));
}

TEST_F(FrontEndTest, ShowLoadsThenResizesAndActivatesBeforeItReturns) {
  frontEnd.Show(a);
  EXPECT_THAT(Happened(), ElementsAre("a load", "a shown", "a resize", "a activate", "a painted"));
  EXPECT_TRUE(a.Visible);
}

TEST_F(FrontEndTest, ResizesAndActivatesAtTheFirstShowOnly) {
  frontEnd.Load(a);
  frontEnd.Show(a);
  Happened();
  frontEnd.Show(a);
  EXPECT_THAT(Happened(), ElementsAre("a shown"));
}

TEST_F(FrontEndTest, ActivatesAgainWhenLoadedAnew) {
  frontEnd.Show(a);
  frontEnd.Unload(a);
  Happened();
  frontEnd.Show(a);
  EXPECT_THAT(Happened(), ElementsAre("a load", "a shown", "a resize", "a activate", "a painted"));
}

TEST_F(FrontEndTest, DoesNotShowAWindowThatUnloadsItselfWhileLoading) {
  a.onLoad = [&] { frontEnd.Unload(a); };
  frontEnd.Show(a);
  EXPECT_THAT(Happened(), ElementsAre("a load", "a unload", "a closed"));
  EXPECT_FALSE(frontEnd.IsLoaded(a));
  frontEnd.ShowModal(a, b);
  EXPECT_THAT(Happened(), ElementsAre("a load", "a unload", "a closed"));
}

TEST_F(FrontEndTest, ClosesAWindowOnceThatUnloadsItselfAndThenFailsToLoad) {
  a.onLoad = [&] {
    frontEnd.Unload(a);
    throw RuntimeError(5);
  };
  EXPECT_EQ(ErrorOf([&] { frontEnd.Load(a); }), 5);
  EXPECT_THAT(Happened(), ElementsAre("a load", "a unload", "a closed"));
}

TEST_F(FrontEndTest, RunsNoMoreHandlersOfAWindowThatGoesWhileItIsShown) {
  const auto unload = [&] { frontEnd.Unload(a); };
  frontEnd.onShow = unload;
  frontEnd.Show(a);
  EXPECT_THAT(Happened(), ElementsAre("a load", "a shown", "a unload", "a closed"));
  frontEnd.onShow = nullptr;
  a.onResize = unload;
  frontEnd.Show(a);
  EXPECT_THAT(Happened(), ElementsAre("a load", "a shown", "a resize", "a unload", "a closed"));
  a.onResize = nullptr;
  a.onActivate = unload;
  frontEnd.Show(a);
  EXPECT_THAT(Happened(),
              ElementsAre("a load", "a shown", "a resize", "a activate", "a unload", "a closed"));
  EXPECT_FALSE(a.Visible);
}

TEST_F(FrontEndTest, UnloadsAWindowOnce) {
  frontEnd.Show(a);
  Happened();
  frontEnd.Unload(a);
  frontEnd.Unload(a);
  EXPECT_THAT(Happened(), ElementsAre("a unload", "a closed"));
  EXPECT_FALSE(frontEnd.IsLoaded(a));
  EXPECT_FALSE(a.Visible);
}

TEST_F(FrontEndTest, DoesNothingForAWindowThatIsNotLoaded) {
  frontEnd.Unload(a);
  EXPECT_THAT(Happened(), IsEmpty());
}

TEST_F(FrontEndTest, RunsTheUnloadHandlerOnceWhenItUnloadsItself) {
  bool stillLoaded = false;
  a.onUnload = [&] {
    frontEnd.Unload(a);
    stillLoaded = frontEnd.IsLoaded(a) && a.Visible;
  };
  frontEnd.Show(a);
  Happened();
  frontEnd.Unload(a);
  EXPECT_THAT(Happened(), ElementsAre("a unload", "a closed"));
  EXPECT_TRUE(stillLoaded) << "the window goes after its handler";
}

TEST_F(FrontEndTest, MayUnloadOtherWindowsFromAnUnloadHandler) {
  for (Form* form : {&a, &b, &c}) frontEnd.Load(*form);
  a.onUnload = [&] {
    for (std::size_t i = frontEnd.LoadedForms().size(); --i > 0;) {
      frontEnd.Unload(*frontEnd.LoadedForms()[i]);
    }
  };
  b.onUnload = [&] { frontEnd.Unload(a); };
  Happened();
  frontEnd.Unload(a);
  EXPECT_THAT(Happened(),
              ElementsAre("a unload", "c unload", "c closed", "b unload", "b closed", "a closed"));
  EXPECT_THAT(frontEnd.LoadedForms(), IsEmpty());
}

TEST_F(FrontEndTest, KeepsAWindowWhoseUnloadHandlerFailsAndCanUnloadItLater) {
  frontEnd.Load(a);
  a.onUnload = [] { throw RuntimeError(70); };
  EXPECT_EQ(ErrorOf([&] { frontEnd.Unload(a); }), 70);
  EXPECT_TRUE(frontEnd.IsLoaded(a));
  a.onUnload = nullptr;
  frontEnd.Unload(a);
  EXPECT_FALSE(frontEnd.IsLoaded(a));
}

TEST_F(FrontEndTest, HasTheLoadedWindowsInTheOrderOfLoading) {
  for (Form* form : {&b, &a, &c}) frontEnd.Load(*form);
  EXPECT_THAT(frontEnd.LoadedForms(), ElementsAre(&b, &a, &c));
  frontEnd.Unload(a);
  frontEnd.Show(b);
  EXPECT_THAT(frontEnd.LoadedForms(), ElementsAre(&b, &c));
  frontEnd.Load(a);
  EXPECT_THAT(frontEnd.LoadedForms(), ElementsAre(&b, &c, &a));
}

TEST_F(FrontEndTest, CountsAWindowLoadedWhileAnotherLoadsBehindIt) {
  a.onLoad = [&] { frontEnd.Load(b); };
  frontEnd.Load(a);
  EXPECT_THAT(frontEnd.LoadedForms(), ElementsAre(&a, &b));
}

TEST_F(FrontEndTest, RunsAModalWindowAfterItsFirstShow) {
  frontEnd.ShowModal(a, b);
  EXPECT_THAT(Happened(), ElementsAre("a load", "a shown", "a resize", "a activate", "a painted",
                                      "a modal over b", "a unload", "a closed"));
}

TEST_F(FrontEndTest, DoesNotRunAModalWindowThatGoesAtItsActivation) {
  a.onActivate = [&] { frontEnd.Unload(a); };
  frontEnd.ShowModal(a, b);
  EXPECT_EQ(Happened().back(), "a closed");
}

TEST_F(FrontEndTest, ReportsThePointerOnlyWhenItChanges) {
  EXPECT_EQ(frontEnd.MousePointer(), kDefaultPointer);
  for (const int pointer : {0, 11, 11, 0, 0, 11}) {
    frontEnd.SetMousePointer(pointer);
    EXPECT_EQ(frontEnd.MousePointer(), pointer);
  }
  EXPECT_THAT(frontEnd.pointers, ElementsAre(11, 0, 11));
}

}  // namespace
}  // namespace tarvo::test
