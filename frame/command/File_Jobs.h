#pragma once

#include "frame/command/Command.h"
#include "frame/files/Result.h"

#include <functional>

/// Does one file after another: a failure prints its reason and the others go on; Ctrl-C ends the list behind the file in
/// work. `job` gets the path as it was given.
Exit_Status For_Each_File(const QStringList& files, const std::function<Result<void>(const QString& file)>& job);

/// A failure with the text of the pixel library's last one.
tl::unexpected<Error> Image_Failure();
