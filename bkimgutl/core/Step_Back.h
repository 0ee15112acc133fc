#pragma once

/// For threads that work ahead: where processors are short, those that show what was made and answer the user go before
/// this one from now on, or a window waits until it has had its turn.
void Step_Back();
