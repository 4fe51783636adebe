#include <ZEL/base/Exception.h>
#include <ZEL/base/SafeFile.h>
#include <ZEL/interchange/OwnFolder.h>
#include <ZEL/interchange/UnpackedFile.h>
#include <ZEL/interchange/UnpackingModule.h>

#include <dlfcn.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

namespace ZEL::Interchange {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void raiseNoModule(std::string const & container) {
    char const * const reason = ::dlerror();
    raiseCannotUnpack(container, reason == nullptr ? "no module" : reason);
}

/// Never unloaded: who unpacks one container unpacks others.
decltype(&zelUnpackModel) loadModule(std::string const & container) {
    void * const module = ::dlopen((ownFolder() / ZEL_UNPACKING_MODULE).c_str(), RTLD_NOW);
    void * const function = module == nullptr ? nullptr : ::dlsym(module, "zelUnpackModel");
    if (function == nullptr) {
        raiseNoModule(container);
    }
    return reinterpret_cast<decltype(&zelUnpackModel)>(function);
}

/// A folder of its own, which goes with all that is in it.
class TemporaryFolder {
public:
    TemporaryFolder() : fPath((fs::temp_directory_path() / "zel-XXXXXX").string()) {
        if (::mkdtemp(fPath.data()) == nullptr) {
            throw Exception("cannot make a folder in " + fs::temp_directory_path().string() + ": " +
                            std::generic_category().message(errno));
        }
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        fs::remove_all(fPath, ignored);
    }
    TemporaryFolder(TemporaryFolder const &) = delete;
    TemporaryFolder & operator=(TemporaryFolder const &) = delete;

    [[nodiscard]] std::string const & path() const noexcept { return fPath; }

private:
    std::string fPath;
};

/// Makes the folders of the file, and returns the file.
std::string withFolders(fs::path const & file) {
    fs::create_directories(file.parent_path());
    return file.string();
}

} // namespace

/// A `SafeFile` is removed also when a signal ends the program.
class UnpackedFile::Impl {
public:
    explicit Impl(std::string const & container)
        : fFile(withFolders(fFolder.path() + fs::absolute(container).lexically_normal().string())) {
        if (!fFile.open()) {
            raiseCannotUnpack(container, fFile.getReason());
        }
    }
    ~Impl() { fFile.remove(); }
    Impl(Impl const &) = delete;
    Impl & operator=(Impl const &) = delete;

    [[nodiscard]] std::string const & folder() const noexcept { return fFolder.path(); }
    [[nodiscard]] std::string const & path() const noexcept { return fFile.getTemporaryName(); }

    std::string entry;

private:
    TemporaryFolder fFolder;
    SafeFile fFile;
};

bool UnpackedFile::isPacked(std::string const & file) {
    std::error_code failure;
    if (!fs::is_regular_file(file, failure)) {
        return false; // a pipe would block
    }
    std::array<char, 4> head{};
    std::ifstream in(file, std::ios::binary);
    return in.read(head.data(), head.size()) && std::string_view(head.data(), head.size()) == "PK\x03\x04";
}

UnpackedFile::UnpackedFile(std::string const & file, UnpackingLimits const & limits)
    : fImpl(std::make_unique<Impl>(file)) {
    loadModule(file)(file, limits, path(), fImpl->entry);
}

UnpackedFile::~UnpackedFile() = default;

std::string const & UnpackedFile::path() const noexcept { return fImpl->path(); }
std::string const & UnpackedFile::folder() const noexcept { return fImpl->folder(); }
std::string const & UnpackedFile::entry() const noexcept { return fImpl->entry; }

} // namespace ZEL::Interchange
