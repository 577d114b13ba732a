// A machine that fails one of the questions that it is asked, in a way of the test's choice.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "halvermonte/Machine.hpp"

namespace halvermonte::test {

enum class Question {
  smcService,
  openSMC,
  closeSMC,
  wideCalls,
  keyInfo,
  keyBytes,
  sensors,
  driveCount,
  driveWalk,
  drive,
  clock,
  command,
  kernelVariable,
};

/// One question, and what it is about: a key's four characters, a drive's place, a command.
struct Call {
  Question question;
  std::string subject;

  bool operator==(const Call&) const = default;
};

/// The ways in which a question can fail. Which question knows which way: waysOf.
enum class Way {
  none,
  code,             ///< the kernel's code
  codeOfHighBits,   ///< a code whose low 14 bits are clear
  result,           ///< the controller's result byte
  noData,           ///< a key of size 0
  refused,          ///< 88-byte calls are not answered
  absent,           ///< no service, list, iterator or output, or a drive that cannot be read
  empty,            ///< a list or an output of nothing, or a drive without statistics
  oneLess,          ///< a list without its last sensor
  withoutProducts,  ///< sensors without a name
  withoutEvents,    ///< sensors without a reading
  backwards,        ///< the clock goes back
  notANumber,       ///< the clock shows none
  raises,           ///< a platform exception
  outOfMemory,      ///< std::bad_alloc
};

const std::vector<Way>& waysOf(Question question);

/// For the messages of failing tests.
std::string described(const Call& call, Way way);

class FaultyMachine : public MachineWrapper {
 public:
  using MachineWrapper::MachineWrapper;

  /// The questions since the last `listen`.
  const std::vector<Call>& calls() const { return calls_; }
  /// Forgets the questions so far, and lets none fail.
  void listen() { failAt(0, Way::none); }
  /// The same, and lets the question of that place fail, counted from now on.
  void failAt(size_t place, Way way);
  /// The same, and lets every such question fail.
  void failEvery(const Call& call, Way way);

  SMCService smcService() override;
  uint32_t openSMC() override;
  void closeSMC() override;
  bool answersWideCalls() override;
  SMCKeyInfo smcKeyInfo(uint32_t key) override;
  SMCKeyBytes smcKeyBytes(uint32_t key) override;
  std::shared_ptr<const HIDServices> hidServices(HIDSensorKind kind) override;
  std::optional<size_t> driveCount() override;
  void beginDriveWalk() override;
  Drive drive(size_t index) override;
  double clock() override;
  std::optional<std::string> outputOfCommand(const std::string& command) override;
  std::optional<int64_t> kernelVariable(const std::string& name) override;

 private:
  /// Notes the question; answers how it is to fail, unless by an exception, which it throws.
  Way noted(Question question, std::string subject = "");

  std::vector<Call> calls_;
  size_t place_ = 0;
  std::optional<Call> every_;
  Way way_ = Way::none;
};

}  // namespace halvermonte::test
