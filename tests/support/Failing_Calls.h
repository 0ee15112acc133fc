#pragma once

#include <string>

/// Makes a chosen system call of this process fail. The test program's own definitions of open, write, fsync, rename,
/// link, close and their relatives stand in front of the C library's; outside a plan they only pass on.
class Failing_Calls {
public:
    /// The n-th call (from 1) from now on fails with this error and does nothing, but for close, which closes. Calls that
    /// put things back after a failure work again.
    explicit Failing_Calls(int n, int error_number);
    ~Failing_Calls();
    Failing_Calls(const Failing_Calls&) = delete;
    Failing_Calls& operator=(const Failing_Calls&) = delete;

    bool Was_Reached() const;  ///< the n-th call came
    std::string Name() const;  ///< of the call that failed
    static int Calls_So_Far(); ///< since the plan began

    /// Every call of this name fails, as on a file system without it: "link".
    static void Refuse_Always(const char* name, int error_number) { Refuse_From(1, name, error_number); }

    /// Calls of this name fail from the n-th on (from 1, counted from now). Several names may be refused at a time.
    static void Refuse_From(int n, const char* name, int error_number);
    /// The next call of this name fails, as the first try of a rename into another file system.
    static void Refuse_Once(const char* name, int error_number);
    static void Refuse_Nothing();
};
