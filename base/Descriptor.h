// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string_view>

namespace base {

/// An open file of the operating system, closed when this goes. Calls that a signal interrupts are taken up again.
class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept;
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor() { Close(); }

    /// Opens with the flags of open(2); commands that are started do not inherit it. Not open on failure.
    static Descriptor Open(const char* path, int flags, mode_t mode = 0666);
    /// Opens for reading what is neither a folder nor something that would keep the opener waiting.
    static Descriptor OpenForReading(const char* path);

    bool IsOpen() const { return number_ >= 0; }
    int Number() const { return number_; }

    /// Reads at most `size` bytes. The count read, 0 at the end, -1 on failure.
    ssize_t Read(char* bytes, std::size_t size);
    /// Writes all of `bytes`; False when not all could be written.
    bool Write(std::string_view bytes);
    /// Returns once what was written is on the disk, or on its way where the file system does not let itself be waited
    /// for. False when something was lost.
    bool Sync();
    /// False when the system reports, only now, that something written was lost. Not open afterwards in any case.
    bool Close();

  private:
    int number_ = -1;
};

}  // namespace base
