// Large blocks are marked for large pages, and nothing else is.

#include "frame/pages.hpp"

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <new>
#include <string>

#include "frame/entry.hpp"

namespace Kovra::frame {
namespace {

/// The flags that the system keeps of the mapping that holds an address.
std::string flagsOf(void const* address) {
  auto const wanted = reinterpret_cast<std::uintptr_t>(address);
  std::ifstream maps("/proc/self/smaps");
  bool here = false;
  for (std::string line; std::getline(maps, line);) {
    unsigned long first = 0, end = 0;
    if (std::sscanf(line.c_str(), "%lx-%lx ", &first, &end) == 2) {
      here = wanted >= first && wanted < end;
    } else if (here && line.starts_with("VmFlags:")) {
      return line + ' ';
    }
  }
  return {};
}

bool asksForLargePages(void const* address) {
  return flagsOf(address).find(" hg ") != std::string::npos;
}

/// Fresh memory, for which nobody has asked anything yet: the heap may give back what somebody had.
/// As there, it begins in the middle of a page.
class Block {
 public:
  explicit Block(std::size_t size)
      : size_(size + offset),
        memory_(
            ::mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {
    if (memory_ == MAP_FAILED) throw std::bad_alloc();
  }
  ~Block() { ::munmap(memory_, size_); }
  Block(Block const&) = delete;
  Block& operator=(Block const&) = delete;

  char* get() const { return static_cast<char*>(memory_) + offset; }
  char& operator[](std::size_t index) const { return get()[index]; }

 private:
  static constexpr std::size_t offset = 16;

  std::size_t size_;
  void* memory_;
};

class LargePages : public testing::Test {
 protected:
  void SetUp() override {
    if (!std::ifstream("/sys/kernel/mm/transparent_hugepage/enabled")) {
      GTEST_SKIP() << "this system has none";
    }
  }
};

TEST_F(LargePages, AreAskedForWhereABlockIsLarge) {
  std::size_t const size = leastOfLargeBlocks;
  Block const block(size);
  EXPECT_FALSE(asksForLargePages(&block[size / 2]));
  useLargePages(block.get(), size);
  EXPECT_TRUE(asksForLargePages(&block[size / 2]));
}

TEST_F(LargePages, AreNotAskedForWhereABlockIsSmall) {
  std::size_t const size = leastOfLargeBlocks - 1;
  Block const block(size);
  useLargePages(block.get(), size);
  EXPECT_FALSE(asksForLargePages(&block[size / 2]));
}

TEST_F(LargePages, AreNotAskedForBeyondTheBlock) {
  std::size_t const size = 3 * leastOfLargeBlocks;
  Block const block(size);
  useLargePages(&block[leastOfLargeBlocks], leastOfLargeBlocks);
  EXPECT_FALSE(asksForLargePages(&block[leastOfLargeBlocks - 1]));
  EXPECT_TRUE(asksForLargePages(&block[leastOfLargeBlocks + leastOfLargeBlocks / 2]));
  EXPECT_FALSE(asksForLargePages(&block[2 * leastOfLargeBlocks]));
}

TEST_F(LargePages, AreAskedForByALongReply) {
  std::string const text = "<a>" + std::string(leastOfLargeBlocks, 'x') + "</a>";
  Reply const reply(text.data(), text.size());
  ASSERT_EQ(reply.scan().fault, Fault::none);
  EXPECT_TRUE(asksForLargePages(reply.tree().text() + text.size() / 2));
}

TEST_F(LargePages, AreAskedForByAReplyOfManyNodes) {
  std::string text = "<a>";
  while (sizeof(Node) * text.size() / 4 < leastOfLargeBlocks) text += "<b/><b/><b/><b/>";
  text += "</a>";
  Reply const reply(text.data(), text.size());
  ASSERT_EQ(reply.scan().fault, Fault::none);
  ASSERT_LT(text.size(), leastOfLargeBlocks);
  EXPECT_TRUE(asksForLargePages(&reply.tree().nodes()[reply.tree().nodes().size() / 2]));
}

// A host may look at errno after a call.
TEST_F(LargePages, LeaveTheErrorNumberAlone) {
  void* const gone =
      ::mmap(nullptr, leastOfLargeBlocks, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  ASSERT_NE(gone, MAP_FAILED);
  ASSERT_EQ(::munmap(gone, leastOfLargeBlocks), 0);
  errno = 17;
  useLargePages(gone, leastOfLargeBlocks);  // which fails
  EXPECT_EQ(errno, 17);
}

}  // namespace
}  // namespace Kovra::frame
