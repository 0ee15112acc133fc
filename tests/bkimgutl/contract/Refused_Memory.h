#pragma once

/// Requests for memory that operator new grants to this thread until it refuses one, once; below 0, as at the start, it
/// refuses none. Tells as well, by being below 0 again, that one was refused.
extern thread_local int Requests_Until_Refused;
