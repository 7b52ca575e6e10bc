#pragma once

#include <Cocoa/Cocoa.h>

/// One level of collections within collections. A collection that holds itself has no end: beyond
/// the deepest level an NSException is raised, before the stack runs out. Conversions run on the
/// host's thread only, so one count serves them all.
class NestingLevel {
public:
    NestingLevel() {
        if (depth_ == deepest)
            [NSException raise:NSInvalidArgumentException
                        format:@"Collections are nested more than %d levels deep", deepest];
        ++depth_;
    }
    NestingLevel(const NestingLevel&) = delete;
    NestingLevel& operator=(const NestingLevel&) = delete;
    ~NestingLevel() { --depth_; }

    static constexpr int deepest = 1000;

private:
    inline static int depth_ = 0;
};
