#include "framework/core/Object.h"

namespace framework {

void Object::destroy() const noexcept {
    delete this;
}

}  // namespace framework
