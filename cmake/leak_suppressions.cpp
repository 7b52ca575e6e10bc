/// What the Objective-C runtime allocates for itself while classes load and keeps until the process
/// ends. Objects do not come from these two functions, so no leak of ours hides behind them.
///
///     objc_malloc           tables of classes, selectors and methods (__objc_exec_class,
///                           class_addMethod)
///     class_copyMethodList  the list that GNUstep Base asks for once, when it copies behaviour
///     into
///                           its own classes
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions() {
    return "leak:objc_malloc\nleak:class_copyMethodList\n";
}
