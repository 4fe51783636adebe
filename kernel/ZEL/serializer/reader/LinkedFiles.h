#pragma once

#include <ZEL/metamodel/Model.h>
#include <ZEL/serializer/reader/XmiReaderSettings.h>

#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace HASP {
class Uri;
} // namespace HASP

namespace ZEL::Serializer {

class ReadReport;

/// The files that the links of a run lead to: which file a link means, whether it may be opened, and which have been
/// read.
///
/// Files that are read on the spot are models of their own, whatever the rest of the file says of them. Where a part of
/// a model may stand in another file, files wait until the one at hand has been read, which tells its own parts from
/// others.
class ZEL_API LinkedFiles {
public:
    /// Reads a local file: its model, invalid if it holds none; nothing if the run goes on without the file.
    using Read = std::function<std::optional<Model>(std::string const & localFile)>;

    /// Settings and report must outlive it.
    LinkedFiles(XmiReaderSettings const & settings, ReadReport & report, Read read)
        : fSettings(settings), fReport(report), fRead(std::move(read)) {}

    /// A file that a reference leads to.
    struct File {
        std::string uri;  ///< without fragment, by which it is noted
        std::string path; ///< empty if it is not local, or is a metamodel in memory
    };

    /// From here on files wait for `readWaiting`, instead of being read when a reference leads to them.
    void wait() noexcept { fWaits = true; }
    /// The file that a reference leads to from the file with the URI `base`; none, and a log entry, if it cannot be
    /// made absolute.
    [[nodiscard]] std::optional<File> find(HASP::Uri const & reference, std::string const & base);
    /// The URI of that file, which is read then, unless it has been, is a metamodel in memory, or is none that may be
    /// read, which is reported. Throws "Too many files are open ..." beyond the number that the settings allow, and
    /// passes on what reading throws; the run is over then.
    [[nodiscard]] std::optional<std::string> follow(HASP::Uri const & reference, std::string const & base);
    /// Reads the files that wait, in the order in which references led to them. Throws what `follow` does.
    void readWaiting();
    void forgetWaiting() noexcept { fWaiting.clear(); }
    /// Reads a file that is to become a part of `whole`, unless it has been read, may not be, or did not become one
    /// before, or as many files are open as the settings allow; what `read` returns then, else false. Unless that is
    /// true the file is as if nothing had led to it. Passes on what `read` throws; the run is over then.
    bool readInto(Model const & whole, File const & file, std::function<bool()> const & read);
    /// The file is as if nothing had led to it.
    void forget(std::string const & uri) { fModels.erase(uri); }
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
    [[nodiscard]] bool isKnown(std::string const & uri) const;
    void readOnce(File const & file);
    template <class Function> auto open(File const & file, Function read);
    void leaveOut(std::string const & uri);

    XmiReaderSettings const & fSettings;
    ReadReport & fReport;
    Read const fRead;
    unsigned int fOpen = 1;                              ///< files, with the outermost one
    std::unordered_map<std::string, Model> fModels;      ///< by URI; invalid: not to be read
    std::unordered_map<std::string, std::string> fKnown; ///< base and reference to the URI they lead to
    std::unordered_map<std::string, std::string> fNames; ///< of files that were found elsewhere, by URI
    std::vector<Model> fReferred;
    bool fWaits = false;
    std::vector<File> fWaiting;
    std::unordered_set<std::string> fNoParts; ///< URIs of files that have not become parts of models
};

} // namespace ZEL::Serializer
