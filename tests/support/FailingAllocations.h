// Makes operator new fail, to see what the product does without memory. A test program that includes this has
// its operator new replaced.
#pragma once

#include <limits>

namespace support {

// While it lives, allocations of the calling thread fail: the one after `allowed` others, and those that
// follow it until `failing` have failed.
class FailingAllocations
{
  public:
    explicit FailingAllocations(int allowed, int failing = std::numeric_limits<int>::max());
    ~FailingAllocations();
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;

    // True when an allocation has failed since the construction.
    [[nodiscard]] bool HasFailed() const;
};

} // namespace support
