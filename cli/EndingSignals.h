#pragma once

namespace cli {

/// From now on a signal that ends the program removes the files first that were still on their way. One that is ignored
/// stays ignored.
void removeUnfinishedFilesAtSignals();

} // namespace cli
