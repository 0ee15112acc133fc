#pragma once

/// What keeps the user's unsaved work where a crash cannot take it, as the commands see it. While a long one runs no timer
/// fires: it gives the keeper a turn between two pictures, when every record is whole. Nothing is asked or told then.
class Work_Keeper {
public:
    virtual ~Work_Keeper() = default;
    virtual void Keep_Now() {}    ///< before a step that may take seconds and cannot be interrupted
    virtual void Keep_If_Due() {} ///< costs nothing when it kept a moment ago
};
