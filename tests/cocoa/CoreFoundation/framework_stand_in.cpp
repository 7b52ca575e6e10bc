/// What a framework of the system would export. Counts its calls, and keeps the latest argument.

extern "C" __attribute__((visibility("default"))) int unlockedCount = 0;
extern "C" __attribute__((visibility("default"))) void* unlockedLast = nullptr;

extern "C" __attribute__((visibility("default"))) void UnlockPixels(void* pixMap) {
    ++unlockedCount;
    unlockedLast = pixMap;
}
