// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "framework/core/text/String.h"

namespace framework {

/// The program's place on the session's message bus, after the "D-Bus Activation" part of the Desktop Entry
/// Specification: the first process that is started owns the program's name there and opens what the desktop, or a
/// later process, hands to it. Lives from start-up to the end of the process. Main thread.
class DocumentService {
  public:
    enum class Role {
        /// There is no bus, or the owner of the name does not answer: this process works by itself.
        Alone,
        /// This process owns the name.
        First,
        /// Another process owns the name and has taken the items over: this one is to end.
        HandedOver
    };

    /// Takes part under `name`, such as "com.example.program". `paths` are of what this process was asked to open; they
    /// are only sent away here, never opened, and no disk is asked about them. `activate` brings the program's windows
    /// to the front.
    DocumentService(const String& name, const std::vector<std::string>& paths, std::function<void()> activate);
    ~DocumentService();

    Role GetRole() const { return role_; }

  private:
    class Endpoint;

    Role role_ = Role::Alone;
    std::unique_ptr<Endpoint> endpoint_;
};

}  // namespace framework
