// Engines of the C interface over machines that do what no machine file can.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <utility>

#include "capi/Engine.hpp"
#include "halvermonte/Exceptions.hpp"
#include "halvermonte/halvermonte.h"
#include "platform/portable/LiveCounters.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

/// Does something before each pass asks for the controller's first key.
class InterruptingMachine : public TestMachine {
 public:
  std::function<void()> beforeKey = [] {};

  SMCKeyInfo smcKeyInfo(uint32_t key) override {
    beforeKey();
    return TestMachine::smcKeyInfo(key);
  }
};

/// An engine of the C interface whose machine the test keeps in its hands.
class CEngineTest : public testing::Test {
 protected:
  CEngineTest() {
    auto owned = std::make_unique<InterruptingMachine>();
    machine = owned.get();
    machine->keys["TW0P"] = sp78(41.25);
    machine->drives = {DriveStatistics{1000, 2000}};
    const ScopedMachine scope(*machine);
    engine = std::make_unique<halvermonte_engine>(std::move(owned));
  }

  std::string messages() const {
    const char* lines = nullptr;
    EXPECT_EQ(halvermonte_engine_messages(engine.get(), &lines), HALVERMONTE_OK);
    return lines;
  }

  InterruptingMachine* machine;
  std::unique_ptr<halvermonte_engine> engine;
};

TEST_F(CEngineTest, APlatformExceptionEndsThePassWithItsReason) {
  machine->beforeKey = [] { throw PlatformException("the controller is on strike"); };
  EXPECT_EQ(halvermonte_engine_pass(engine.get()), HALVERMONTE_PASS_ENDED);
  EXPECT_STREQ(halvermonte_last_error(), "the controller is on strike");
}

TEST_F(CEngineTest, APassThatEndsLeavesTheRecordAndTheNextPassWhole) {
  ASSERT_EQ(halvermonte_engine_pass(engine.get()), HALVERMONTE_OK);
  machine->drives = {DriveStatistics{5000, 6000}};
  machine->now += 1;
  machine->beforeKey = [] { throw PlatformException("the controller is on strike"); };
  EXPECT_EQ(halvermonte_engine_pass(engine.get()), HALVERMONTE_PASS_ENDED);
  EXPECT_EQ(engine->record->sensors_temperature(), "Airport Proximity\n");
  EXPECT_EQ(engine->record->diskIO_read().uint64Value(), 1000U);

  machine->now += 1;
  machine->beforeKey = [] {};
  EXPECT_EQ(halvermonte_engine_pass(engine.get()), HALVERMONTE_OK);
  EXPECT_EQ(engine->record->diskIO_read().uint64Value(), 5000U);
}

TEST_F(CEngineTest, NoExceptionLeavesACall) {
  machine->beforeKey = [] { throw std::bad_alloc(); };
  EXPECT_EQ(halvermonte_engine_pass(engine.get()), HALVERMONTE_OUT_OF_MEMORY);
  EXPECT_STREQ(halvermonte_last_error(), "out of memory");
  machine->beforeKey = [] { throw std::runtime_error("not the platform's"); };
  EXPECT_EQ(halvermonte_engine_pass(engine.get()), HALVERMONTE_FAILED);
  EXPECT_STREQ(halvermonte_last_error(), "not the platform's");
  machine->beforeKey = [] { throw 42; };
  EXPECT_EQ(halvermonte_engine_pass(engine.get()), HALVERMONTE_FAILED);
  EXPECT_STREQ(halvermonte_last_error(), "an exception of an unknown type");
}

TEST_F(CEngineTest, WhatThePassWouldPrintIsInItsMessages) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  EXPECT_EQ(messages(), "");
  machine->controller.present = false;
  machine->driveReason = "the drives are on strike";
  EXPECT_EQ(halvermonte_engine_pass(engine.get()), HALVERMONTE_OK);
  EXPECT_EQ(messages(), "the drives are on strike\nError: no SMC found\n");

  machine->controller.present = true;
  machine->driveReason.reset();
  EXPECT_EQ(halvermonte_engine_pass(engine.get()), HALVERMONTE_OK);
  EXPECT_EQ(messages(), "");
  std::fflush(stdout);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(CEngineTest, APassThatEndsHasItsMessagesToo) {
  machine->driveReason = "the drives are on strike";
  machine->beforeKey = [] { throw PlatformException("the controller is on strike"); };
  EXPECT_EQ(halvermonte_engine_pass(engine.get()), HALVERMONTE_PASS_ENDED);
  EXPECT_EQ(messages(), "the drives are on strike\n");
}

TEST(CEngineLifeTest, AnEngineLeavesNothingBehind) {
  const size_t handles = portable::liveHandles();
  halvermonte_engine* engine = nullptr;
  ASSERT_EQ(halvermonte_engine_create_bundled("M1", &engine), HALVERMONTE_OK);
  ASSERT_EQ(halvermonte_engine_pass(engine), HALVERMONTE_OK);
  halvermonte_engine_free(engine);
  EXPECT_EQ(portable::liveHandles(), handles);
}

TEST(CEngineLifeTest, AnEngineLeavesTheThreadsMachineAsItWas) {
  TestMachine machine;
  const ScopedMachine scope(machine);
  halvermonte_engine* engine = nullptr;
  ASSERT_EQ(halvermonte_engine_create_bundled("M1", &engine), HALVERMONTE_OK);
  EXPECT_EQ(&Machine::current(), &machine);
  ASSERT_EQ(halvermonte_engine_pass(engine), HALVERMONTE_OK);
  EXPECT_EQ(&Machine::current(), &machine);
  EXPECT_TRUE(machine.asked.empty());
  halvermonte_engine_free(engine);
}

}  // namespace
}  // namespace halvermonte::test
