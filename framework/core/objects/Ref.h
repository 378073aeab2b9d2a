// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>

#include "framework/core/objects/Object.h"

namespace framework {

/// The absent object. A Ref that was given nothing is Nil.
inline constexpr std::nullptr_t Nil = nullptr;

/// Raises NilObjectException. Out of line, so that every use of a Ref stays small.
[[noreturn]] void RaiseNilObject();

/// What `->` gives: holds its object to the end of the whole expression, since a method may yield, and others then take
/// away the reference that it was called by.
template <class T>
class Held {
  public:
    explicit Held(T* object) noexcept : object_(object) { object_->Retain(); }
    ~Held() { object_->Release(); }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

    T* operator->() const noexcept { return object_; }

  private:
    T* object_;
};

/// An owning reference to an object, or Nil. Every access through Nil raises NilObjectException.
template <class T>
class Ref {
  public:
    Ref() noexcept = default;
    Ref(std::nullptr_t) noexcept {}
    explicit Ref(T* object) noexcept : object_(object) { retain(); }
    Ref(const Ref& other) noexcept : object_(other.object_) { retain(); }
    Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    template <class U>
    requires std::is_convertible_v<U*, T*> Ref(const Ref<U>& other)
    noexcept : object_(other.Get()) { retain(); }
    ~Ref() {
        if (object_) object_->Release();
    }

    Ref& operator=(Ref other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }

    Held<T> operator->() const {
        if (!object_) RaiseNilObject();
        return Held<T>(object_);
    }
    T& operator*() const {
        if (!object_) RaiseNilObject();
        return *object_;
    }

    /// The bare pointer, null for Nil. For the framework's own plumbing.
    T* Get() const noexcept { return object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }

    template <class U>
    bool operator==(const Ref<U>& other) const noexcept {
        return object_ == other.Get();
    }
    bool operator==(std::nullptr_t) const noexcept { return object_ == nullptr; }

  private:
    template <class U, class... Arguments>
    friend Ref<U> New(Arguments&&... arguments);

    void retain() const noexcept {
        if (object_) object_->Retain();
    }

    T* object_ = nullptr;
};

/// Makes a new object; the only way by which objects come into being.
template <class T, class... Arguments>
Ref<T> New(Arguments&&... arguments) {
    Ref<T> made;
    made.object_ = new T(std::forward<Arguments>(arguments)...);  // with the reference that it is born with
    return made;
}

/// The object as one of class T, or Nil when it is of another class.
template <class T, class U>
Ref<T> As(const Ref<U>& reference) {
    return Ref<T>(dynamic_cast<T*>(reference.Get()));
}

}  // namespace framework
