// SPDX-License-Identifier: GPL-2.0-or-later
// Where exceptions come that nothing caught. Dispatch, which is below all that a stray one is told to, only knows that
// there is such a place.
#include "framework/core/desktop/Alert.h"
#include "framework/core/desktop/Application.h"
#include "framework/core/threads/Dispatch.h"

namespace framework::internal {

namespace {

/// The exception behind `stray`, as one of ours. `foreign` is filled and given for one that is not.
RuntimeException* asRuntimeException(const std::exception_ptr& stray, RuntimeException& foreign) {
    try {
        std::rethrow_exception(stray);
    } catch (RuntimeException& error) {
        return &error;
    } catch (const std::exception& error) {
        foreign = RuntimeException(error.what());
    } catch (...) {
        foreign = RuntimeException("An unknown exception was raised.");
    }
    return &foreign;
}

void report(RuntimeException& error) {
    const Ref<Application> application = Application::Current();
    if (application && application->Event_UnhandledException(error)) return;
    if (!error.Explanation().IsEmpty()) {
        MsgBox(error.Explanation());
    } else {
        String text = error.ClassName();
        if (!error.Message().IsEmpty()) text += ": " + error.Message();
        MsgBox("The program has to quit because of an error that it did not expect.\n\n" + text);
    }
    Quit(1);
}

}  // namespace

// The exception itself is no longer in flight when its handler runs, so that the handler may wait and yield.
void HandleStray(const std::exception_ptr& stray) noexcept {
    RuntimeException foreign;
    RuntimeException* error = asRuntimeException(stray, foreign);
    try {
        report(*error);
    } catch (...) {
        // A failure of the failure path, or a kill while the alert stood open: nothing is left to be told.
        return;
    }
}

}  // namespace framework::internal
