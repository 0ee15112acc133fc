#pragma once

#include "slides/Slide_Player.h"

/// The keys of a show: Space pauses, the arrows and the page keys step, Esc and F11 stop, Return marks the slide, Delete
/// takes it out of the show. Nothing for other keys, and for any key with Ctrl, Alt or Meta.
std::optional<Slide_Control_Code> Slide_Key_Code(const QKeyEvent& event);
