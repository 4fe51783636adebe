#include <ZEL/interchange/OwnFolder.h>

#include <dlfcn.h>

#include <array>
#include <climits>
#include <string>
#include <system_error>

namespace ZEL::Interchange {

std::filesystem::path ownFolder() {
    static int const inLibrary = 0;
    Dl_info library{};
    if (::dladdr(&inLibrary, &library) == 0) {
        return {};
    }
    std::filesystem::path file(library.dli_fname);
    // The name is the one that the loader was given, which may be relative to the folder that the program was in then.
    if (void * const handle = ::dlopen(library.dli_fname, RTLD_LAZY | RTLD_NOLOAD)) {
        std::array<char, PATH_MAX> origin{};
        if (::dlinfo(handle, RTLD_DI_ORIGIN, origin.data()) == 0) {
            file = std::filesystem::path(origin.data()) / file.filename();
        }
        ::dlclose(handle);
    }
    std::error_code failure;
    std::filesystem::path const found = std::filesystem::canonical(file, failure);
    return failure ? std::filesystem::path() : found.parent_path();
}

} // namespace ZEL::Interchange
