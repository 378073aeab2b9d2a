// SPDX-License-Identifier: GPL-2.0-or-later
#include "catalogue/MetadataQueries.h"

#include "app/Window1.h"

namespace marrowbeck {
namespace {

/// The answer of the metadata tool as it came: values in the order of the attributes' names, with NUL between them.
/// Empty, after a message, when the tool failed.
String ask(const String& command, const String& path) {
    const Ref<Shell> shell = New<Shell>();
    shell->Execute(command + path);
    if (shell->ErrorCode() != 0) {
        MsgBox("Error code: " + Str(shell->ErrorCode()));
        return {};
    }
    return shell->Result();
}

}  // namespace

String Window1::GetAll(const String& path) {
    return ask(MetadataQueries::kAll, path);
}

String Window1::GetEXIF(const String& path) {
    return ask(MetadataQueries::kCamera, path);
}

}  // namespace marrowbeck
