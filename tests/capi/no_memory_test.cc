// Every allocation of a call fails once, and the call says that memory is short.
#include <gtest/gtest.h>
#include <halvermonte/halvermonte.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <new>
#include <string>

namespace {

/// How many allocations of this thread still succeed; below 0: all of them.
thread_local long remaining = -1;

void* allocated(size_t size) noexcept {
  const bool fails = remaining == 0;
  if (remaining > 0) --remaining;
  return fails ? nullptr : std::malloc(size);
}

}  // namespace

// The other forms of new and delete come down to these, also those of the shared library.
void* operator new(size_t size) {
  if (void* const block = allocated(size)) return block;
  throw std::bad_alloc();
}
void* operator new(size_t size, const std::nothrow_t& /*tag*/) noexcept { return allocated(size); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, size_t /*size*/) noexcept { std::free(block); }

namespace {

halvermonte_status withAllocations(long count, const std::function<halvermonte_status()>& call) {
  remaining = count;
  const halvermonte_status status = call();
  remaining = -1;
  return status;
}

/// Calls with one allocation more each time, until there are enough. Returns how many failed.
long failuresUntilItSucceeds(const std::function<halvermonte_status()>& call) {
  for (long count = 0;; ++count) {
    const halvermonte_status status = withAllocations(count, call);
    if (status == HALVERMONTE_OK) return count;
    EXPECT_EQ(status, HALVERMONTE_OUT_OF_MEMORY) << "after " << count << " allocations";
    EXPECT_STREQ(halvermonte_last_error(), "out of memory") << "after " << count << " allocations";
    if (testing::Test::HasFailure()) return count;
  }
}

class NoMemoryTest : public testing::Test {
 protected:
  NoMemoryTest() {
    EXPECT_EQ(halvermonte_engine_create_from_file(FILES "/desk.machine", &engine_), HALVERMONTE_OK);
  }
  ~NoMemoryTest() override { halvermonte_engine_free(engine_); }

  halvermonte_engine* engine_ = nullptr;
};

TEST_F(NoMemoryTest, AnEngineIsNotMade) {
  halvermonte_engine* made = nullptr;
  EXPECT_GT(failuresUntilItSucceeds(
                [&] { return halvermonte_engine_create_from_file(FILES "/desk.machine", &made); }),
            100);
  halvermonte_engine_free(made);
}

TEST_F(NoMemoryTest, APassEndsAndALaterOneSucceeds) {
  EXPECT_GT(failuresUntilItSucceeds([&] { return halvermonte_engine_pass(engine_); }), 10);
}

TEST_F(NoMemoryTest, ASnapshotIsNotMade) {
  halvermonte_snapshot* made = nullptr;
  ASSERT_EQ(halvermonte_engine_pass(engine_), HALVERMONTE_OK);
  EXPECT_GT(failuresUntilItSucceeds([&] { return halvermonte_engine_snapshot(engine_, &made); }),
            5);
  halvermonte_snapshot_free(made);
}

TEST_F(NoMemoryTest, AnErrorsTextIsReplacedIfThereIsNoRoomForIt) {
  const std::string name(1000, 'x');
  halvermonte_engine* made = nullptr;
  bool isReplaced = false;
  for (long count = 0; std::strlen(halvermonte_last_error()) < name.size(); ++count) {
    halvermonte_engine_pass(nullptr);  // leaves another text
    const halvermonte_status status = withAllocations(
        count, [&] { return halvermonte_engine_create_bundled(name.c_str(), &made); });
    const bool isFull = std::strlen(halvermonte_last_error()) > name.size();
    if (status == HALVERMONTE_UNKNOWN_NAME && !isFull) {
      EXPECT_STREQ(halvermonte_last_error(), "out of memory");
      isReplaced = true;
    }
  }
  EXPECT_TRUE(isReplaced);
}

}  // namespace
