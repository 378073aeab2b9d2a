// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>

#include "framework/core/objects/Object.h"
#include "framework/core/objects/Ref.h"

namespace marrowbeck {

using framework::Ref;

/// What all back references to one object share: where it is, null once it is gone.
template <class T>
class Anchor : public framework::Object {
  public:
    explicit Anchor(T* target) : target_(target) {}
    T* Target() const { return target_; }
    void Forget() { target_ = nullptr; }

  private:
    T* target_;
};

/// A member of each object that back references lead to. Makes the anchor when the first one asks.
template <class T>
class AnchorOwner {
  public:
    AnchorOwner() = default;
    AnchorOwner(const AnchorOwner&) = delete;
    AnchorOwner& operator=(const AnchorOwner&) = delete;
    ~AnchorOwner() {
        if (anchor_) anchor_->Forget();
    }

    const Ref<Anchor<T>>& For(T* owner) {
        if (!anchor_) anchor_ = framework::New<Anchor<T>>(owner);
        return anchor_;
    }

  private:
    Ref<Anchor<T>> anchor_;
};

/// A reference upward in a tree. It does not keep its object alive, so that trees are freed, and becomes Nil when the
/// object goes. T has a method BackAnchor. Every access through Nil raises NilObjectException.
template <class T>
class BackReference {
  public:
    BackReference() = default;
    BackReference(std::nullptr_t) {}
    BackReference(T* target) {
        if (target) anchor_ = target->BackAnchor();
    }
    BackReference(const Ref<T>& target) : BackReference(target.Get()) {}

    T* Get() const { return anchor_ ? anchor_->Target() : nullptr; }
    T* operator->() const {
        T* const target = Get();
        if (!target) framework::RaiseNilObject();
        return target;
    }
    explicit operator bool() const { return Get() != nullptr; }
    operator Ref<T>() const { return Ref<T>(Get()); }
    bool operator==(std::nullptr_t) const { return Get() == nullptr; }
    bool operator==(const Ref<T>& other) const { return Get() == other.Get(); }

  private:
    Ref<Anchor<T>> anchor_;
};

}  // namespace marrowbeck
