#pragma once

#include <atomic>

/// Lets a thread of the library be told to give up in the middle of a file. What takes long asks Is_Cancelled at each row
/// or block and fails then; nobody else notices.
class Cancellation_Scope {
public:
    /// Until its end the calling thread obeys `requested`, which must outlive it. Scopes do not nest.
    explicit Cancellation_Scope(const std::atomic<bool>& requested);
    Cancellation_Scope(const Cancellation_Scope&) = delete;
    Cancellation_Scope& operator=(const Cancellation_Scope&) = delete;
    ~Cancellation_Scope();
};

/// Always false on a thread without a scope.
bool Is_Cancelled();

/// The reason to fail with.
constexpr const char* Cancelled_Reason = "was given up";
