#include "platform/linux/Memory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

namespace quillmender {
namespace {

class MemoryTest : public testing::Test {
  protected:
    static constexpr std::size_t pages = 64;

    MemoryTest()
        : pageSize_(std::size_t(sysconf(_SC_PAGESIZE))),
          begin_(static_cast<char *>(
              mmap(nullptr, size(), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))) {}
    ~MemoryTest() override { munmap(begin_, size()); }

    std::size_t size() const { return pages * pageSize_; }
    std::size_t pageSize() const { return pageSize_; }
    char *begin() { return begin_; }

    std::ptrdiff_t residentPages() {
        std::vector<unsigned char> states(pages);
        EXPECT_EQ(mincore(begin_, size(), states.data()), 0);
        return std::ranges::count_if(states, [](unsigned char state) { return (state & 1) != 0; });
    }

  private:
    std::size_t pageSize_;
    char *begin_;
};

TEST_F(MemoryTest, IsThereBeforeItIsWrittenTo) {
    ASSERT_EQ(residentPages(), 0);
    populateMemory(begin(), size());
    EXPECT_EQ(residentPages(), std::ptrdiff_t{pages});
}

TEST_F(MemoryTest, KeepsWhatIsThere) {
    begin()[size() - 1] = 'x';
    populateMemory(begin(), size());
    EXPECT_EQ(begin()[size() - 1], 'x');
}

TEST_F(MemoryTest, NeedNotBeginOrEndWithAPage) {
    constexpr std::size_t inner = 100;
    populateMemory(begin() + pageSize() - inner, pageSize() + 2 * inner);
    EXPECT_EQ(residentPages(), 3);
}

TEST_F(MemoryTest, NothingIsHarmless) {
    populateMemory(nullptr, 0);
    EXPECT_EQ(residentPages(), 0);
}

} // namespace
} // namespace quillmender
