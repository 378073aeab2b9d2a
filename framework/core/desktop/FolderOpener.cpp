// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/desktop/FolderOpener.h"

#include <gio/gio.h>

#include <filesystem>
#include <memory>
#include <system_error>

#include "framework/core/process/ActivationToken.h"

namespace framework {
namespace {

struct FreeApplications {
    void operator()(GList* list) const { g_list_free_full(list, g_object_unref); }
};
using Applications = std::unique_ptr<GList, FreeApplications>;

/// By the name of its executable, which tells this program from others whatever desktop entry starts it.
bool isThisProgram(GAppInfo* application) {
    const char* const executable = g_app_info_get_executable(application);
    std::error_code unknown;
    const auto own = std::filesystem::read_symlink("/proc/self/exe", unknown).filename();
    return executable && std::filesystem::path(executable).filename() == own;
}

struct FreeContext {
    void operator()(GAppLaunchContext* context) const { g_object_unref(context); }
};
using Context = std::unique_ptr<GAppLaunchContext, FreeContext>;

bool launch(GAppInfo* application, const String& url, const String& activationToken) {
    const Context context(g_app_launch_context_new());
    if (!activationToken.IsEmpty()) {
        for (const char* name : internal::kActivationVariables) {
            g_app_launch_context_setenv(context.get(), name, activationToken.CString());
        }
    }
    GList uris{const_cast<char*>(url.CString()), nullptr, nullptr};
    return g_app_info_launch_uris(application, &uris, context.get(), nullptr) == TRUE;
}

}  // namespace

bool internal::OpenFolderElsewhere(const Ref<FolderItem>& folder, const String& activationToken) {
    // The person's choice comes first.
    const Applications applications(g_app_info_get_all_for_type("inode/directory"));
    // Some desktops open folders by a program that they know of by themselves.
    if (!applications) return folder->Launch();
    const String url = folder->URLPath();
    for (const GList* each = applications.get(); each; each = each->next) {
        auto* const application = static_cast<GAppInfo*>(each->data);
        if (!isThisProgram(application) && launch(application, url, activationToken)) return true;
    }
    return false;
}

}  // namespace framework
