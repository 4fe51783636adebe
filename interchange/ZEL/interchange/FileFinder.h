#pragma once

#include <ZEL/Export.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/serializer/reader/XmiReaderSettings.h>

#include <memory>
#include <string>
#include <vector>

namespace ZEL::Interchange {

/// The path of a file URI; empty for any other URI.
[[nodiscard]] ZEL_API std::string pathOfFileUri(std::string const & uri);

/// Where links lead that name a place by a URI of a tool's own: one entry of a table of the user's.
struct Place {
    /// The beginning of a URI, such as "pathmap://SHOP_MODEL/", or the name of a file, such as "UML_Profile.xml", which
    /// stands for the files of that name in whatever folder a link seeks them.
    std::string uri;
    /// The folder where what follows in the URI is found, or the one file that is meant.
    std::string path;
};

/// Finds the files of one read: those in containers, and those that links name by URIs that are no places.
///
/// In this order a link leads to a place of the table, the longest URI first; to where the resolver of the settings
/// says; and to the libraries that come with this system: primitive types, metaclasses and standard stereotypes at the
/// URIs by which the usual tools name them. A link never leaves the folder of an entry by "..". What is a container of
/// the zip format is unpacked, be it the file itself or, unless the settings bound links by a folder, one that a link leads
/// to.
///
/// Must outlive the read; what it unpacked is removed with it.
class ZEL_API FileFinder {
public:
    explicit FileFinder(std::vector<Place> places = {});
    ~FileFinder();
    FileFinder(FileFinder const &) = delete;
    FileFinder & operator=(FileFinder const &) = delete;

    /// The path to give to the reader: the file itself or, for a container, the model in it. Throws what
    /// `UnpackedFile` throws.
    [[nodiscard]] std::string open(std::string const & file);
    /// Lets the reader find files here. The settings must not be used any longer than this object.
    void prepare(Serializer::XmiReaderSettings & settings);
    /// Sets the URI of a model that was read to the one by which it was named: that of its container, or of a link that
    /// led to it. Links to it are then written as they were. To be called for each model after the read; opens a
    /// transaction for it.
    void restoreUri(Model const & model) const;
    /// The text with the paths of unpacked files replaced by those of their containers, for messages.
    [[nodiscard]] std::string withoutTemporaryNames(std::string text) const;

private:
    class Impl;
    std::unique_ptr<Impl> fImpl;
};

/// The folder of the libraries that come with this system; empty if they are not installed.
[[nodiscard]] ZEL_API std::string librariesFolder();

} // namespace ZEL::Interchange
