#pragma once

#include <ZEL/Export.h>

#include <cstdint>
#include <memory>
#include <string>

namespace ZEL::Interchange {

/// What may come out of a container. Compressed text of a model is a tenth of its size; a file that is made to fill a
/// disk is a thousandth.
struct UnpackingLimits {
    std::uint64_t bytes = std::uint64_t(1) << 30U; ///< of the model
    std::uint64_t ratio = 200;                     ///< of the model to its compressed form, beyond the first 16 MiB
    std::uint64_t entries = 100'000;               ///< of the container
};

/// The model in a container of the zip format, such as a `.mdzip`, in a temporary file of its own.
///
/// Of several entries the one that by its name is the most likely model is taken, and the largest of those: MagicDraw's
/// `com.nomagic.magicdraw.uml_model.model`, then `.uml`, `.xmi`, `.mdxml`, `.cmof`, `.emof` and `.xml`.
class ZEL_API UnpackedFile {
public:
    /// Whether the file begins as containers of the zip format do. False for a file that cannot be read.
    [[nodiscard]] static bool isPacked(std::string const & file);

    /// Unpacks the model. Throws a text with the file's name if that is no container, has no entry that may be a
    /// model, has one that is encrypted or damaged or exceeds the limits, if there is no room for it, or if the module
    /// that unpacks, in the folder `zel` beside the library, cannot be loaded.
    explicit UnpackedFile(std::string const & file, UnpackingLimits const & limits = {});
    /// Removes the temporary file.
    ~UnpackedFile();
    UnpackedFile(UnpackedFile const &) = delete;
    UnpackedFile & operator=(UnpackedFile const &) = delete;

    /// The temporary file. Its path ends with that of the container's folder, absolute, below `folder()`, so that links
    /// in it, relative ones with "../" included, lead to places below `folder()`.
    [[nodiscard]] std::string const & path() const noexcept;
    /// The temporary folder: a path below it names, without it, a place beside the container.
    [[nodiscard]] std::string const & folder() const noexcept;
    /// The name that the model has in the container.
    [[nodiscard]] std::string const & entry() const noexcept;

private:
    class Impl;
    std::unique_ptr<Impl> fImpl;
};

} // namespace ZEL::Interchange
