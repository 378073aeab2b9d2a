#pragma once

#include <csignal>

namespace marrowbeck::tools {

/// While it lives, a mapped file that becomes shorter, or whose disk fails, reads
/// as zeros instead of ending the process with SIGBUS: the missing page is replaced
/// by an empty one. A parser then finds nonsense, which it is used to.
/// The signal belongs to the process: only one may live at a time.
class LostPagesReadAsZeros {
  public:
    LostPagesReadAsZeros();
    ~LostPagesReadAsZeros();
    LostPagesReadAsZeros(const LostPagesReadAsZeros&) = delete;
    LostPagesReadAsZeros& operator=(const LostPagesReadAsZeros&) = delete;

  private:
    struct sigaction previous_ {};
};

}  // namespace marrowbeck::tools
