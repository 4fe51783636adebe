#pragma once

#include <ZEL/metamodel/Model.h>
#include <ZEL/serializer/reader/XmiReaderSettings.h>

#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace HASP {
class Uri;
} // namespace HASP

namespace ZEL::Serializer {

class ReadReport;

/// The files that the links of a run lead to: which file a link means, whether it may be opened, and which have been
/// read.
class ZEL_API LinkedFiles {
public:
    /// Reads a local file: its model, invalid if it holds none; nothing if the run goes on without the file.
    using Read = std::function<std::optional<Model>(std::string const & localFile)>;

    /// Settings and report must outlive it.
    LinkedFiles(XmiReaderSettings const & settings, ReadReport & report, Read read)
        : fSettings(settings), fReport(report), fRead(std::move(read)) {}

    /// The URI, without fragment, of the file that a reference leads to from the file with the URI `base`; none, and a
    /// log entry, if it cannot be made absolute. The file is read then, unless it has been, is a metamodel in memory,
    /// or is none that may be read, which is reported. Throws "Too many files are open ..." beyond the number that the
    /// settings allow, and passes on what reading throws; the run is over then.
    [[nodiscard]] std::optional<std::string> follow(HASP::Uri const & reference, std::string const & base);
    /// The file with this URI is not to be read again; its model is invalid if it is not to be read at all.
    void note(std::string const & uri, Model const & model) { fModels.insert_or_assign(uri, model); }
    /// The target of a link, whose URI `follow` has made, by the name that led to its file, if that is no place.
    [[nodiscard]] std::string nameOf(std::string const & target) const;
    /// The models of the files that were read, in that order.
    [[nodiscard]] std::vector<Model> const & models() const noexcept { return fReferred; }
    void forgetModels() noexcept { fReferred.clear(); }
    void clear() noexcept;

private:
    [[nodiscard]] std::string locate(HASP::Uri const & file) const;
    [[nodiscard]] bool isInRootFolder(std::string const & localFile) const;
    void readOnce(std::string const & uri, std::string const & localFile);
    void leaveOut(std::string const & uri);

    XmiReaderSettings const & fSettings;
    ReadReport & fReport;
    Read const fRead;
    unsigned int fOpen = 1;                              ///< files, with the outermost one
    std::unordered_map<std::string, Model> fModels;      ///< by URI; invalid: not to be read
    std::unordered_map<std::string, std::string> fKnown; ///< base and reference to the URI they lead to
    std::unordered_map<std::string, std::string> fNames; ///< of files that were found elsewhere, by URI
    std::vector<Model> fReferred;
};

} // namespace ZEL::Serializer
