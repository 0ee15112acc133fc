#pragma once

#include <QtCore/QString>
#include <optional>

/// What the program was started with: nothing, or one slide show file.
struct Program_Arguments {
    QString show; ///< empty for none
};

/// Answers --help and --version, which need no display. Gives the exit status when that was all.
std::optional<int> Answer_Without_Window(int argc, char** argv);

/// The rest, once Qt has taken its own options. Without a value the arguments are wrong, and that was said.
std::optional<Program_Arguments> Read_Arguments(int argc, char** argv);

constexpr int Wrong_Usage = 2;
