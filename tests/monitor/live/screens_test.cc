// Whole screens of the bundled machines, as the files in screens/ have them. With
// HALVERMONTE_WRITE_SCREENS set, the test writes the files instead; look at each before you commit
// it.
#include <gmock/gmock.h>

#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <tuple>

#include "halvermonte/BundledMachines.hpp"
#include "halvermonte/SimulatedMachine.hpp"
#include "monitor/live/LiveScreen.hpp"
#include "platform/Processor.hpp"
#include "tests/monitor/live/LivePasses.hpp"

namespace halvermonte::test {
namespace {

using Size = std::tuple<size_t, size_t>;  // columns, rows

class BundledScreens
    : public ::testing::TestWithParam<std::tuple<std::string_view, Size, std::string_view>> {};

TEST_P(BundledScreens, AreAsDrawn) {
  if (kProcessor == Processor::arm64) GTEST_SKIP() << "arm64 builds steady CPU readings";
  const auto [fileName, size, characters] = GetParam();
  const auto [columns, rows] = size;
  const BundledMachine* const machine = findBundledMachine(fileName);
  ASSERT_NE(machine, nullptr);
  LivePasses passes(SimulatedMachine::fromText(machine->json, std::string(fileName)));
  LiveScreen screen(characters == "utf8", false, History::Duration(1));
  passes.show(screen, 60);
  const std::string text = screen.draw({columns, rows}, passes.now).text();
  const std::string path = SCREENS_FOLDER "/" + std::string(fileName) + "-" +
                           std::to_string(columns) + "x" + std::to_string(rows) + "-" +
                           std::string(characters) + ".txt";
  if (std::getenv("HALVERMONTE_WRITE_SCREENS") != nullptr) std::ofstream(path) << text;
  std::ifstream file(path);
  EXPECT_EQ(text, std::string(std::istreambuf_iterator<char>(file), {})) << path;
}

std::string nameOfTest(const ::testing::TestParamInfo<BundledScreens::ParamType>& info) {
  const auto [machine, size, characters] = info.param;
  const auto [columns, rows] = size;
  return std::string(machine) + "_" + std::to_string(columns) + "x" + std::to_string(rows) + "_" +
         std::string(characters);
}

INSTANTIATE_TEST_SUITE_P(AllSizes, BundledScreens,
                         ::testing::Combine(::testing::Values("M1", "M2Max", "M3Max", "M4Pro",
                                                              "IntelNotebook", "IntelTower"),
                                            ::testing::Values(Size(80, 24), Size(40, 8),
                                                              Size(200, 60)),
                                            ::testing::Values("utf8", "ascii")),
                         nameOfTest);

}  // namespace
}  // namespace halvermonte::test
