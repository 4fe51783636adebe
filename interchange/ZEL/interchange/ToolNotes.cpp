#include <ZEL/interchange/ToolNotes.h>
#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/reader/RemainderReader.h>

#include <utility>

namespace ZEL::Interchange {

using Serializer::RemainderReader;
using Serializer::XmiConstants;

namespace {

constexpr std::string_view kId = "EAID_"; ///< begins the ids that Enterprise Architect makes

bool isBlank(std::string_view text) { return text.find_first_not_of(" \t\r\n") == std::string_view::npos; }

class NoteReader {
public:
    explicit NoteReader(std::vector<std::string_view> const & blocks) : fBlocks(blocks) {}

    ToolNotes read() {
        for (;;) {
            switch (fBlocks.next()) {
            case RemainderReader::Event::Start:
                start();
                break;
            case RemainderReader::Event::End:
                end();
                break;
            case RemainderReader::Event::Text:
                if (fOpen.size() > 1 && fOpen[1] == Kind::Documentation) {
                    fText += fBlocks.text();
                }
                break;
            case RemainderReader::Event::Nothing:
                return std::move(fNotes);
            }
        }
    }

private:
    enum class Tool : char { Unknown, EnterpriseArchitect, VisualParadigm };
    enum class Kind : char { Other, Subject, PrimitiveTypes, Documentation };

    [[nodiscard]] std::string_view attribute(std::string_view name) const { return fBlocks.attribute(name); }
    [[nodiscard]] std::string_view xmiAttribute(std::string_view name) const {
        return fBlocks.attribute(name, XmiConstants::XMI_NS_URI);
    }

    void start() {
        Kind kind = Kind::Other;
        if (fOpen.empty()) {
            std::string_view const tool = attribute("extender");
            fTool = isEnterpriseArchitect(tool) ? Tool::EnterpriseArchitect
                    : isVisualParadigm(tool)    ? Tool::VisualParadigm
                                                : Tool::Unknown;
        } else if (fTool == Tool::EnterpriseArchitect) {
            kind = startOfArchitect(fBlocks.name());
        } else if (fTool == Tool::VisualParadigm && fOpen.size() == 1) {
            kind = startOfParadigm(fBlocks.name());
        }
        fOpen.push_back(kind);
    }

    void end() {
        Kind const kind = fOpen.back();
        fOpen.pop_back();
        if (kind == Kind::Subject) {
            fSubjects.pop_back();
        } else if (kind == Kind::Documentation) {
            note(fNotes.documentation, {}, fText);
        } else if (kind == Kind::PrimitiveTypes) {
            fIsInPrimitiveTypes = false;
        }
        if (fOpen.empty()) {
            ++fBlock;
        }
    }

    // --- Enterprise Architect: one block beside the model, with an entry for each of its elements --------------------

    Kind startOfArchitect(std::string const & name) {
        if (name == "element" || name == "connector" || name == "attribute" || name == "operation" ||
            name == "parameter") {
            std::string_view const id = xmiAttribute("idref");
            return id.empty() ? Kind::Other : begin(std::string(id));
        }
        if (name == "primitivetypes") {
            return startOfPrimitiveTypes();
        }
        if (fIsInPrimitiveTypes) {
            if (std::string_view const type = xmiAttribute("type"); type.ends_with(":PrimitiveType")) {
                fNotes.primitiveTypes.emplace(xmiAttribute("id"), attribute("name"));
            }
            return Kind::Other;
        }
        if (fOpen.back() != Kind::Subject) {
            return Kind::Other;
        }
        std::string const & subject = fSubjects.back();
        if (name == "source" || name == "target") {
            // The ends of a connector have ids of their own, made of that of the connector.
            std::size_t const replaced = kId.size() + 2;
            bool const hasEnds = std::string_view(subject).starts_with(kId) && subject.size() > replaced;
            return hasEnds ? begin(std::string(kId) + (name == "source" ? "src" : "dst") + subject.substr(replaced))
                           : Kind::Other;
        }
        if (name == "documentation") {
            note(fNotes.documentation, subject, attribute("value"));
        } else if (name == "properties") {
            note(fNotes.documentation, subject, attribute("documentation"));
            note(fNotes.typeNames, subject, attribute("type"));
        }
        return Kind::Other;
    }

    Kind begin(std::string id) {
        fSubjects.push_back(std::move(id));
        return Kind::Subject;
    }

    Kind startOfPrimitiveTypes() {
        if (fIsInPrimitiveTypes) {
            return Kind::Other;
        }
        fIsInPrimitiveTypes = true;
        return Kind::PrimitiveTypes;
    }

    // --- Visual Paradigm: a block in each element --------------------------------------------------------------------

    Kind startOfParadigm(std::string const & name) {
        if (name != "documentation") {
            return Kind::Other;
        }
        // What stands in the element itself may be HTML.
        for (std::string_view const plain :
             {attribute("plainText"), attribute("value"), attribute("body"), xmiAttribute("value")}) {
            if (!isBlank(plain)) {
                note(fNotes.documentation, {}, plain);
                return Kind::Other;
            }
        }
        fText.clear();
        return Kind::Documentation;
    }

    void note(std::vector<ToolNotes::Note> & notes, std::string const & id, std::string_view text) const {
        if (!isBlank(text)) {
            notes.push_back({id, fBlock, std::string(text)});
        }
    }

    RemainderReader fBlocks;
    ToolNotes fNotes;
    std::vector<Kind> fOpen;
    std::vector<std::string> fSubjects; ///< the ids of the open elements that are about one
    std::string fText;
    std::size_t fBlock = 0;
    Tool fTool = Tool::Unknown;
    bool fIsInPrimitiveTypes = false;
};

} // namespace

ToolNotes ToolNotes::of(std::vector<std::string_view> const & blocks) {
    return blocks.empty() ? ToolNotes() : NoteReader(blocks).read();
}

bool isEnterpriseArchitect(std::string_view tool) { return tool.starts_with("Enterprise Architect"); }

bool isVisualParadigm(std::string_view tool) { return tool.starts_with("Visual Paradigm"); }

} // namespace ZEL::Interchange
