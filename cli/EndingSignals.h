#pragma once

namespace cli {

/// From now on, a signal that ends the program first removes unfinished files. Ignored signals stay ignored.
void removeUnfinishedFilesAtSignals();

} // namespace cli
