#pragma once

#include "frame/files/Result.h"

#include <string>

/// A copy with the mode, attributes and times of the source, written like every file: whole or not at all.
Result<void> Copy_Whole_File(const std::string& source, const std::string& target);
