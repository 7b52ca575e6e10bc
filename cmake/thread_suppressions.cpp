/// What the Objective-C runtime and GNUstep Base do to the thread sanitizer. They are not built with
/// it, so it knows of their locks alone.
///
///     objc_mutex_lock   The runtime sends +initialize with its one lock held, and Base's classes
///                       take locks of their own then. Elsewhere Base holds those as a message
///                       makes the runtime take its lock. A class is initialised once, and no other
///                       thread gets at its locks before.
extern "C" __attribute__((visibility("default"))) const char* __tsan_default_suppressions() {
    return "deadlock:objc_mutex_lock\n";
}
