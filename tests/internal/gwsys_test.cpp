#include "base/gwsys.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <set>
#include <thread>

#include "tavdgui/tavdgui.h"

namespace {

tgui_object_info info(tavd::gwobject object) {
  tgui_object_info info{};
  EXPECT_EQ(tgui_get_object(static_cast<const tgui_object*>(object), &info), 0);
  return info;
}

class SystemTools : public testing::Test {
 protected:
  SystemTools() : before_(tgui_object_count()) { tavd::gwInit(tgui_main_module()); }
  ~SystemTools() override {
    tavd::gwExit();
    EXPECT_EQ(tgui_object_count(), before_);
    tavd::gwInit(nullptr);
    tavd::gwExit();
  }
  int made() const { return tgui_object_count() - before_; }

 private:
  int before_;
};

TEST_F(SystemTools, PenIsSolidOneWideAndOfTheSystemColour) {
  const tgui_object_info pen = info(tavd::gwSysPen(13));
  EXPECT_EQ(pen.kind, TGUI_PEN);
  EXPECT_EQ(pen.style, TGUI_PEN_SOLID);
  EXPECT_EQ(pen.width, 1);
  EXPECT_EQ(pen.colour, tgui_system_colour(13));
  EXPECT_NE(pen.colour, 0U);
}

TEST_F(SystemTools, BrushIsSolidAndOfTheSystemColour) {
  const tgui_object_info brush = info(tavd::gwSysBrush(13));
  EXPECT_EQ(brush.kind, TGUI_BRUSH);
  EXPECT_EQ(brush.style, 0);
  EXPECT_EQ(brush.colour, tgui_system_colour(13));
}

TEST_F(SystemTools, SecondUseGetsTheSameTool) {
  tavd::gwobject pen = tavd::gwSysPen(5);
  EXPECT_EQ(tavd::gwSysPen(5), pen);
  EXPECT_NE(tavd::gwSysPen(6), pen);
  EXPECT_EQ(tavd::gwSysPen(5), pen);
  EXPECT_EQ(made(), 2);
}

TEST_F(SystemTools, PensAndBrushesHaveCachesOfTheirOwn) {
  EXPECT_NE(tavd::gwSysPen(5), tavd::gwSysBrush(5));
  EXPECT_EQ(made(), 2);
}

TEST_F(SystemTools, WithTwentyInUseAnotherColourGetsTheLastOne) {
  std::set<tavd::gwobject> pens;
  for (int index = 0; index < 20; ++index) pens.insert(tavd::gwSysPen(index));
  EXPECT_EQ(pens.size(), 20U);
  tavd::gwobject last = tavd::gwSysPen(19);
  EXPECT_EQ(tavd::gwSysPen(20), last);
  EXPECT_EQ(tavd::gwSysPen(30), last);
  EXPECT_EQ(made(), 20);
  EXPECT_NE(tavd::gwSysPen(0), last);
}

TEST_F(SystemTools, PenThatCouldNotBeMadeTakesNoPlace) {
  tgui_fail_objects(0, 1);
  EXPECT_EQ(tavd::gwSysPen(5), nullptr);
  EXPECT_NE(tavd::gwSysPen(5), nullptr);
}

TEST_F(SystemTools, ExitDeletesAllToolsAndEmptiesTheCaches) {
  tavd::gwSysPen(1);
  tavd::gwSysBrush(2);
  EXPECT_EQ(made(), 2);
  tavd::gwExit();
  EXPECT_EQ(made(), 0);
  EXPECT_NE(tavd::gwSysPen(1), nullptr);
  EXPECT_EQ(made(), 1);
}

TEST_F(SystemTools, ModuleIsThatOfInit) {
  EXPECT_EQ(tavd::gwmodule(), tgui_main_module());
  tavd::gwInit(nullptr);
  EXPECT_EQ(tavd::gwmodule(), nullptr);
}

// Whether another thread gets past gwLock while this one holds it.
bool another_thread_passes() {
  std::atomic<bool> passed = false;
  std::thread other([&] {
    tavd::gwLock();
    passed = true;
    tavd::gwUnlock();
  });
  for (int i = 0; i < 50 && !passed; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  const bool result = passed;
  tavd::gwUnlock();
  other.join();
  EXPECT_TRUE(passed);
  return result;
}

TEST_F(SystemTools, LockKeepsAnotherThreadOutUntilItIsLeft) {
  tavd::gwLock();
  EXPECT_FALSE(another_thread_passes());
}

TEST_F(SystemTools, HolderMayTakeTheLockAgain) {
  tavd::gwLock();
  EXPECT_NE(tavd::gwSysPen(3), nullptr);
  tavd::gwLock();
  tavd::gwUnlock();
  tavd::gwUnlock();
  tavd::gwLock();
  EXPECT_FALSE(another_thread_passes());
}

TEST(SystemLock, KeepsNobodyOutWithoutInit) {
  tavd::gwExit();
  tavd::gwLock();
  EXPECT_TRUE(another_thread_passes());
}

TEST(SystemLock, ToolsAreCachedWithoutInit) {
  tavd::gwobject pen = tavd::gwSysPen(5);
  EXPECT_NE(pen, nullptr);
  EXPECT_EQ(tavd::gwSysPen(5), pen);
  tavd::gwExit();
}

}  // namespace
