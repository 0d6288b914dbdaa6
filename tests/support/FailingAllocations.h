// Makes operator new fail, to see what the product does without memory. A test program that includes this has
// its operator new replaced.
#pragma once

namespace support {

// While it lives, an allocation of the calling thread fails: the one after `allowed` others, and all that
// follow it.
class FailingAllocations
{
  public:
    explicit FailingAllocations(int allowed);
    ~FailingAllocations();
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;

    // True when an allocation has failed since the construction.
    [[nodiscard]] bool HasFailed() const;
};

} // namespace support
