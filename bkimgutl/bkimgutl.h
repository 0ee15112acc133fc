#pragma once

// The pixel library: everything that touches pixels, picture files in and out. Free of Qt; called from one thread, uses
// all cores inside a call. Only Load_Ahead goes on between calls.

#include "bkimgutl/contract/Creation.h"
#include "bkimgutl/contract/Files.h"
#include "bkimgutl/contract/Histogram.h"
#include "bkimgutl/contract/Load_Ahead.h"
#include "bkimgutl/contract/Tone.h"
#include "bkimgutl/contract/Types.h"
#include "bkimgutl/contract/Window_System.h"
