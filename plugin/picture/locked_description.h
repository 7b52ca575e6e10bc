#pragma once

#include "plugin/entry/host_services.h"
#include "plugin/picture/picture_editor.h"

/// A Picture's description, locked as the type that is asked for, for as long as this lives.
class LockedDescription {
public:
    LockedDescription(REALpictureStruct* picture, REALpictureType type)
        : picture_(picture)
        , isLocked_(REALLockPictureDescription(picture, &description_, type) != 0) {
        if (!isLocked_) unlock_failed_description(picture);
    }
    LockedDescription(const LockedDescription&) = delete;
    LockedDescription& operator=(const LockedDescription&) = delete;
    ~LockedDescription() {
        if (isLocked_) REALUnlockPictureDescription(picture_);
    }

    bool is_locked() const { return isLocked_; }
    /// What the host says that it locked; 0 and null unless it locked anything.
    std::uint32_t type() const { return isLocked_ ? description_.type : 0; }
    void* data() const { return isLocked_ ? description_.data : nullptr; }

private:
    REALpictureStruct* picture_;
    REALpictureDescription description_ = {};
    bool isLocked_;
};
