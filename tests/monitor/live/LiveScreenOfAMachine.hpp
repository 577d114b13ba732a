// A live view over a machine that a test sets up.
#pragma once

#include <gmock/gmock.h>

#include <chrono>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "monitor/live/LiveScreen.hpp"
#include "tests/monitor/live/LivePasses.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {

class LiveScreenOfAMachine : public ::testing::Test {
 protected:
  // The machine makes its passes with the first one, so that a test can set it up.
  void pass(int count = 1) {
    if (!passes) passes.emplace(std::move(owned));
    passes->show(screen, count);
  }

  std::vector<std::string> rows(WindowSize size = {80, 24}) {
    std::istringstream text(screen.draw(size, passes->now + later).text());
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) lines.push_back(line);
    return lines;
  }

  // Draws before each key, as the view does.
  void press(const std::vector<KeyPress>& keys, WindowSize size = {80, 24}) {
    for (const KeyPress& key : keys) {
      rows(size);
      screen.press(key);
    }
  }
  void type(const std::string& text) {
    for (const char c : text) press({{Key::character, std::string(1, c)}});
  }

  void addTwoGroups() {
    machine.keys["TC1C"] = flt(61);
    machine.keys["TC2C"] = flt(72);
    machine.keys["TM0P"] = flt(40);
  }
  void addManyTemperatures() {
    for (const char* key : {"TC1C", "TC2C", "TC3C", "TC4C", "TC5C", "TC6C", "TC7C", "TC8C", "TM0P",
                            "TM1P", "TM8P", "TM9P", "TM0S", "TM1S", "TM8S", "TM9S"}) {
      machine.keys[key] = flt(static_cast<float>(40 + machine.keys.size()));
    }
  }

  std::unique_ptr<TestMachine> owned = std::make_unique<TestMachine>();
  TestMachine& machine = *owned;
  std::optional<LivePasses> passes;
  LiveScreen screen{true, false, History::Duration(1)};
  std::chrono::steady_clock::duration later{0};
};

}  // namespace halvermonte::test
