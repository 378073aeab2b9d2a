// SPDX-License-Identifier: GPL-2.0-or-later
// Asked for by LeakSanitizer before main, in tests and tools. It would follow the thread-local storage of a library
// that a plugin of Qt has brought in, the one for JPEG, and crash there. Without that it takes for lost what GLib keeps
// in such storage, and what libraries keep that are loaded for good.
extern "C" const char* __lsan_default_options() {
    return "use_tls=0:print_suppressions=0";
}
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libglib\nleak:libvips\nleak:libMagick\nleak:add_to_global_resize\nleak:_dlerror_run\nleak:ld-linux";
}
