#pragma once

#include "catalogue/Catalogue_State.h"
#include "catalogue/Picture_Locks.h"

#include <vector>

/// What a command does when too few pictures are selected. Hosts pass these numbers.
enum class Selection_Mode : int {
    Selected_With_Message = 0, ///< only the selected ones; a message when nothing is kept
    All_If_None = 1,           ///< all pictures in list order
    Selected_Silently = 2,     ///< only the selected ones
};

struct Selection_Request {
    int minimum = 1; ///< how many count as a selection: 2 for a slide show
    Selection_Mode mode = Selection_Mode::All_If_None;
    Select_Access access = Select_Access::Shared;
    bool grey_allowed = true;
};

/// The one routine by which every command asks for its pictures. Locked pictures are left out with a message. The result
/// holds indices, in the order of selecting or, for all pictures, of the list.
std::vector<int> Pictures_For_Function(const Catalogue_State& state, const Selection_Request& request);
