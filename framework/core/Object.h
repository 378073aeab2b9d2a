#pragma once

namespace framework {

/// Root of all classes that are held by reference. Counts its references itself; the count is plain, since exactly one
/// thread of the program runs at a time. Born with a count of zero: the first Ref takes it over.
class Object {
  public:
    Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object() = default;

    void Retain() const noexcept { ++references_; }
    void Release() const noexcept {
        if (--references_ == 0) delete this;
    }

  private:
    mutable int references_ = 1;
};

}  // namespace framework
