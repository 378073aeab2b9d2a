// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/ui/field/TextField.h"

namespace framework {

/// A text field under its older class name, by which older programs tell it apart.
class EditField : public TextField {};

}  // namespace framework
