#include <ZEL/base/Exception.h>
#include <ZEL/interchange/TemporaryFolder.h>

#include <stdlib.h> // mkdtemp

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace ZEL::Interchange {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() : fPath((fs::temp_directory_path() / "zel-XXXXXX").string()) {
    if (::mkdtemp(fPath.data()) == nullptr) {
        throw Exception("cannot make a folder in " + fs::temp_directory_path().string() + ": " +
                        std::generic_category().message(errno));
    }
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(fPath, ignored);
}

} // namespace ZEL::Interchange
