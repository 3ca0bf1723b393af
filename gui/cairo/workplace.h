// Where a picture of pixels is painted, so that more threads than processors draw as fast as two.
#pragma once

#include <cstddef>
#include <memory>

namespace tavdcairo {

// Memory for pixels, kept from one picture to the next.
struct PixelMemory {
  std::unique_ptr<unsigned char[]> bytes;
  std::size_t size;
};

// A turn on a processor, and memory for pixels that its last picture left in the caches.
//
// The system takes the processor from a thread after a few milliseconds, wherever its picture stands, and
// when it gets it back the others' pictures have driven its own from the caches. So a thread that is about to
// begin a picture first yields to one whose picture is in progress on the same processor. That is a courtesy
// and no lock: a host may keep a picture for as long as it likes, and the others then wait no more than a
// moment.
class Workplace {
 public:
  // The memory is not set to anything. Throws bad_alloc.
  explicit Workplace(std::size_t size);
  ~Workplace();
  Workplace(const Workplace&) = delete;
  Workplace& operator=(const Workplace&) = delete;

  unsigned char* pixels() const { return memory_->bytes.get(); }

 private:
  struct Turn {
    Turn();
    ~Turn();
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    std::size_t processor;
    const char* thread;  // that has it
  };

  Turn turn_;
  std::unique_ptr<PixelMemory> memory_;
};

}  // namespace tavdcairo
