#include "Files.h"

#include "Command.h"
#include "Progress.h"
#include "Text.h"

#include <ZEL/base/Exception.h>
#include <ZEL/base/SafeFile.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <system_error>

namespace cli {
namespace {

/// A model has to be a file with a place, since links are relative to it.
constexpr char kNoStandardStream[] = "a model is kept in a file with a place; ./- is one of that name";

[[noreturn]] void raise(std::string const & what, std::string const & file, std::string const & why) {
    throw Trouble("cannot " + what + " " + nameOf(file) + ": " + why);
}

std::string lastFailure() { return std::generic_category().message(errno); }

} // namespace

void requireReadable(std::string const & file) {
    struct stat status {};
    if (file == "-") {
        raise("read", file, kNoStandardStream);
    }
    if (::stat(file.c_str(), &status) != 0) {
        raise("read", file, lastFailure());
    }
    if (!S_ISREG(status.st_mode)) {
        raise("read", file, S_ISDIR(status.st_mode) ? "it is a folder" : "not a plain file");
    }
    if (::access(file.c_str(), R_OK) != 0) {
        raise("read", file, lastFailure());
    }
}

void requireWritable(std::string const & file) {
    struct stat status {};
    if (file.empty()) {
        raise("write", file, "a file has no empty name");
    }
    if (file == "-") {
        raise("write", file, kNoStandardStream);
    }
    if (file.back() == '/' || (::stat(file.c_str(), &status) == 0 && S_ISDIR(status.st_mode))) {
        raise("write", file, "it is a folder");
    }
    std::filesystem::path const folder = std::filesystem::path(file).parent_path();
    if (::access((folder / ".").c_str(), W_OK | X_OK) != 0) {
        raise("write", file, lastFailure());
    }
}

std::string writablePage(std::string const & name) {
    if (name.empty() || name.back() == '/') {
        requireWritable(name); // which reports what is wrong with it
    }
    std::string page = name + ".html";
    requireWritable(page);
    return page;
}

std::string withoutPageEnding(std::string const & page) {
    constexpr std::string_view kEnding = ".html";
    return page.ends_with(kEnding) ? page.substr(0, page.size() - kEnding.size()) : page;
}

void putPage(std::string const & page, std::function<void(std::string const &)> const & write) {
    Progress const progress("writing " + page);
    ZEL::SafeFile file(page, ZEL::SafeFile::Beside::FreeName);
    if (!file.open()) {
        raise("write", page, file.getReason());
    }
    try {
        write(file.getTemporaryName());
    } catch (ZEL::Exception const & exception) {
        file.remove();
        raise("write", page, exception.what());
    } catch (...) {
        file.remove();
        throw;
    }
    ZEL::SafeFile::Result const result = file.put();
    if (result == ZEL::SafeFile::Result::Damaged) {
        raise("write", page, file.getReason() + "; what was written is in " + file.getTemporaryName());
    }
    if (result != ZEL::SafeFile::Result::Done) {
        file.remove();
        raise("write", page, file.getReason());
    }
}

bool areSameFile(std::string const & a, std::string const & b) {
    std::error_code failure;
    return std::filesystem::equivalent(a, b, failure);
}

bool haveSameContent(std::string const & a, std::string const & b) {
    std::ifstream first(a, std::ios::binary);
    std::ifstream second(b, std::ios::binary);
    using Bytes = std::istreambuf_iterator<char>;
    return first && second && std::equal(Bytes(first), Bytes(), Bytes(second), Bytes());
}

} // namespace cli
