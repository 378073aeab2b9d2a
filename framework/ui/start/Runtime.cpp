// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/start/Runtime.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QIcon>
#include <QTimer>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "framework/core/desktop/Alert.h"
#include "framework/core/desktop/Application.h"
#include "framework/core/desktop/DocumentService.h"
#include "framework/core/desktop/SessionBus.h"
#include "framework/core/desktop/TerminationSignals.h"
#include "framework/core/files/ApplicationPaths.h"
#include "framework/core/files/FolderItem.h"
#include "framework/core/files/Paths.h"
#include "framework/core/process/ActivationToken.h"
#include "framework/core/threads/Dispatch.h"
#include "framework/ui/dialog/AlertBox.h"
#include "framework/ui/drawing/Native.h"
#include "framework/ui/drawing/WindowStyle.h"
#include "framework/ui/start/StartupId.h"
#include "framework/ui/start/ToolkitStart.h"
#include "framework/ui/start/WaylandToken.h"
#include "framework/ui/window/DisplayLoss.h"
#include "framework/ui/window/Global.h"

namespace framework {
namespace {

/// The end of the person's session, which waits for nobody: what would be an alert goes to standard error, and one that
/// is open already closes.
void endWithSession() {
    internal::SetAlertPresenter({});
    if (internal::IsQuitting()) {
        QCoreApplication::exit(1);
    } else {
        Quit();
    }
}

/// The toolkit, for which a session manager ends a program by an event.
class Toolkit : public QApplication {
  public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        internal::NoteInput(*event);
        return QApplication::notify(receiver, event);
    }

  protected:
    bool event(QEvent* event) override {
        if (event->type() != QEvent::Quit) return QApplication::event(event);
        Dispatch(endWithSession);
        return true;
    }
};

/// What lasts from the initialisation to the end of the run. The toolkit keeps references to the argument count.
struct Process {
    Process(int count, char** arguments) : argumentCount(count), toolkit(argumentCount, arguments) {}

    int argumentCount;
    Toolkit toolkit;
    std::vector<std::string> documents;
};

std::unique_ptr<Process>& process() {
    // Never taken down by the exit handlers of the process: what the toolkit still refers to is gone by then.
    static auto& theProcess = *new std::unique_ptr<Process>;
    return theProcess;
}

/// The files and folders that the command line names, as absolute paths. Its bytes are taken as they are: a name need
/// not be valid text. The toolkit has taken out its own options; other options are nobody's and are left.
std::vector<std::string> documentsOf(int argc, char** argv) {
    std::vector<std::string> paths;
    bool optionsEnded = false;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (!optionsEnded && argument.starts_with('-')) {
            optionsEnded = argument == "--";
            continue;
        }
        if (argument.empty()) continue;
        if (Paths::IsUrl(argument)) {
            if (auto path = Paths::FromUrl(argument)) {
                paths.push_back(*std::move(path));
            } else {
                std::fprintf(stderr, "%s is no folder of this computer.\n", argv[i]);
            }
        } else {
            // From a folder that is gone, no path leads anywhere; the document then is one that does not exist.
            std::error_code gone;
            const std::filesystem::path path = std::filesystem::absolute(argument, gone);
            paths.push_back(gone ? std::string(argument) : path.string());
        }
    }
    return paths;
}

/// The icon that the desktop's theme has for the program, else the program's own.
QIcon programIcon(const QString& name) {
    const Ref<FolderItem> icons = ApplicationIconsFolder();
    if (!icons) return QIcon::fromTheme(name);
    const QString folder = native::ToQt(icons->AbsolutePath());
    // Of a program that lies elsewhere than the desktop's own, too.
    QIcon::setThemeSearchPaths(QIcon::themeSearchPaths() << folder);
    // A desktop without any theme has none of the icons that lie in the folders of one.
    QIcon own;
    const QDir sizes(folder + QStringLiteral("/hicolor"));
    for (const QString& size : sizes.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString file = sizes.filePath(size + QStringLiteral("/apps/") + name + QStringLiteral(".png"));
        if (QFile::exists(file)) own.addFile(file);
    }
    return QIcon::fromTheme(name, own);
}

}  // namespace

int RunFrameworkInitialization(int argc, char** argv, const ProgramIdentity& identity,
                               const std::function<int()>& startup) {
    internal::DoWithoutSilentSessionBus();
    QApplication::setStyle(new native::WindowStyle);  // the toolkit takes it over
    {
        const internal::ToolkitStart start;
        process() = std::make_unique<Process>(argc, argv);
    }
    process()->documents = documentsOf(process()->argumentCount, argv);
    QApplication::setApplicationName(native::ToQt(identity.Name));
    QApplication::setDesktopFileName(native::ToQt(identity.DesktopName));
    QApplication::setWindowIcon(programIcon(native::ToQt(identity.DesktopName)));
    // A program ends by Quit, which gives it its last events.
    QApplication::setQuitOnLastWindowClosed(false);
    internal::SetAlertPresenter(internal::PresentAlert);
    internal::SetQuitPreparation(internal::CloseAllWindows);
    internal::SetActivationTokenMaker([] {
        const String startupId = internal::StartupIdOfLastInput();
        return startupId.IsEmpty() ? internal::WaylandActivationToken() : startupId;
    });
    return startup();
}

int RuntimeRun() {
    const std::vector<std::string>& documents = process()->documents;
    int code = 0;
    {
        const String busName = native::FromQt(QApplication::desktopFileName());
        const DocumentService service(busName, documents, internal::BringWindowsToFront);
        if (service.GetRole() != DocumentService::Role::HandedOver) {
            // Inside the loop, so that a quit in the middle of the Open event ends it.
            QTimer::singleShot(0, &process()->toolkit, [&documents] {
                internal::RaiseOpen();
                if (!documents.empty()) internal::RaiseOpenDocuments(documents);
            });
            const TerminationSignals endOfSession([] { Dispatch(endWithSession); });
            internal::OnDisplayLoss([] {
                internal::SetAlertPresenter({});
                internal::CloseForGood();
            });
            code = QApplication::exec();
        }
    }
    internal::EndFramework();
    return code;
}

void internal::EndFramework() {
    CloseAllWindows();
    if (const Ref<Application> application = Application::Current()) application->MenuBar(Nil);
    ForgetGlobals();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    process().reset();
}

}  // namespace framework
