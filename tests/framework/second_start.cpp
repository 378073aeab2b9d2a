// SPDX-License-Identifier: GPL-2.0-or-later
// What a program does with its arguments when it starts: second-start NAME [PATH...] takes part on the message bus and
// prints its role.

#include <QCoreApplication>

#include "framework/core/desktop/DocumentService.h"

int main(int argc, char** argv) {
    using framework::DocumentService;
    const QCoreApplication application(argc, argv);
    const std::vector<std::string> paths(argv + 2, argv + argc);
    const DocumentService service(argv[1], paths, {});
    switch (service.GetRole()) {
        case DocumentService::Role::Alone:
            return std::fputs("alone", stdout) < 0;
        case DocumentService::Role::First:
            return std::fputs("first", stdout) < 0;
        case DocumentService::Role::HandedOver:
            return std::fputs("handed over", stdout) < 0;
    }
}
