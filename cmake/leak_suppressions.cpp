/// What the Objective-C runtime and GNUstep Base keep for themselves. Objects do not come from
/// these functions, so no leak of ours hides behind them.
///
///     objc_malloc           tables of classes, selectors and methods (__objc_exec_class,
///                           class_addMethod), while classes load
///     class_copyMethodList  the list that GNUstep Base asks for once, when it copies behaviour
///     into
///                           its own classes
///     cifframe_type         the description of a type that GNUstep Base makes when a message that
///     an
///                           object does not understand is turned into an exception
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions() {
    return "leak:objc_malloc\nleak:class_copyMethodList\nleak:cifframe_type\n";
}

/// Programs that a test runs say nothing but their own words.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_options() {
    return "print_suppressions=0";
}

/// In libCocoa, for programs that are linked with it.
extern "C" __attribute__((weak)) void useFoundationOnce();

namespace {

// Before main and after every library has started.
__attribute__((constructor)) void warmUp() {
    if (useFoundationOnce) useFoundationOnce();
}

} // namespace
