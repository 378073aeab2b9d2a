// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

namespace framework {

/// Root of all classes that are held by reference. Counts its references itself; the count is plain, since exactly one
/// thread of the program runs at a time. Born with one reference, which New hands to the first Ref, so that an object
/// may refer to itself while it is being built.
class Object {
  public:
    Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object() = default;

    void Retain() const noexcept { ++references_; }
    void Release() const noexcept {
        if (--references_ == 0) destroy();
    }

  private:
    /// Out of line, so that every use of a Ref stays small, and so that no compiler takes the end of one Ref for the
    /// end of an object to which another one still refers.
    void destroy() const noexcept;

    mutable int references_ = 1;
};

}  // namespace framework
