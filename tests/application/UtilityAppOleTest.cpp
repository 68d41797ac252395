// The per-thread OLE latch of UtilityApp and the thread hooks around it,
// counted through the platform's stand-in calls.
#include <znutil/application/UtilityApp.h>

#include <znutil/platform/UserInterface.h>

#include <gtest/gtest.h>

#include "../concurrency/ThreadTestSupport.h"

namespace {

using znutil::platform::CountUserInterfaceCalls;
using znutil_test::RunOn;

unsigned long Initializes() { return CountUserInterfaceCalls().oleInitialize; }
unsigned long Uninitializes() { return CountUserInterfaceCalls().oleUninitialize; }

TEST(UtilityAppOleTest, ALatchNotACount) {
  ZnThread worker(0), idle(0);
  unsigned long const initializes = Initializes(), uninitializes = Uninitializes();
  ASSERT_TRUE(RunOn(worker, [&] {
    UtilityApp::OleUninitialize();  // never initialised here: no platform call
    EXPECT_EQ(Uninitializes(), uninitializes);
    EXPECT_EQ(UtilityApp::OleInitialize(), S_OK);
    EXPECT_EQ(UtilityApp::OleInitialize(), 1);
    UtilityApp::OleUninitialize();
    UtilityApp::OleUninitialize();
    EXPECT_EQ(Uninitializes(), uninitializes + 2);
    EXPECT_EQ(UtilityApp::OleInitialize(), 1);  // deliberate: never again on this thread
    EXPECT_EQ(Initializes(), initializes + 1);
  }));
  worker.SignalShutdown(true);  // the thread's end gives OLE back once more
  EXPECT_EQ(Uninitializes(), uninitializes + 3);
  // A thread that never initialised gives nothing back at its end.
  ASSERT_TRUE(RunOn(idle, [] {}));
  idle.SignalShutdown(true);
  EXPECT_EQ(Uninitializes(), uninitializes + 3);
}

TEST(UtilityAppOleTest, ForeignThreadsAreAttachedButNeverUninitialized) {
  unsigned long const initializes = Initializes(), uninitializes = Uninitializes();
  znutil_test::Concurrently(4, [] {  // several at once, each with a latch of its own
    EXPECT_EQ(UtilityApp::OleInitialize(), S_OK);
    EXPECT_EQ(UtilityApp::OleInitialize(), 1);  // the attach gave it data to keep the flag in
    EXPECT_EQ(ZnThread::GetThread(), nullptr);
    UtilityApp::OleUninitialize();
  });
  EXPECT_EQ(Initializes(), initializes + 4);
  EXPECT_EQ(Uninitializes(), uninitializes);
}

}  // namespace
