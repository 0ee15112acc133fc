#include "bkimgutl/core/Cancellation.h"

namespace {

thread_local const std::atomic<bool>* requested_here = nullptr;

} // namespace

Cancellation_Scope::Cancellation_Scope(const std::atomic<bool>& requested)
{
    requested_here = &requested;
}

Cancellation_Scope::~Cancellation_Scope()
{
    requested_here = nullptr;
}

bool Is_Cancelled()
{
    return requested_here != nullptr && requested_here->load(std::memory_order_relaxed);
}
