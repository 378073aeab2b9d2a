// Asked for by LeakSanitizer before main. It would follow the thread-local storage of a library that a plugin of Qt has
// brought in, the one for JPEG, and crash there. Without that it takes for lost what GLib keeps in such storage.
extern "C" const char* __lsan_default_options() {
    return "use_tls=0";
}
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libglib";
}
