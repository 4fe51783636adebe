// What the debugger looks at: one handle of each kind, and memory that holds none.

#include <ZEL/ZEL.h>

#include <cstdint>

void look();
void look() {} // the debugger stops here

int main() {
    ZEL::MetaModel const model(ZEL::FactoryRegistry::instance()->createModel("http://schema.omg.org/spec/MOF/2.0"));
    ZEL::Factory const factory = model.getFactoryFactory();
    model.beginTransaction("before the draft");
    ZEL::Class const book = factory.createClass();
    book.setName("Book");
    ZEL::Class const hostile = factory.createClass();
    hostile.setName("a\nb\xE2\x80\xAE"
                    "c");
    ZEL::Comment const unnamed = factory.createComment();
    model.commitTransaction();

    ZEL::MetaModel const draft = model.createDeviantWithName("draft");
    ZEL::MetaModel const dropped = model.createDeviantWithName("dropped");
    ZEL::Class const inDraft = book.asDeviant(draft);
    ZEL::Class const inDropped = book.asDeviant(dropped);
    draft.beginTransaction("rename");
    inDraft.setName("Volume");
    draft.commitTransaction();
    model.removeDeviantWithName("dropped");

    ZEL::Class orphan;
    {
        ZEL::MetaModel const other(ZEL::FactoryRegistry::instance()->createModel("http://schema.omg.org/spec/MOF/2.0"));
        other.beginTransaction("lost");
        orphan = ZEL::Factory(other.getFactoryFactory()).createClass();
        other.commitTransaction();
    }
    model.beginTransaction("open");
    ZEL::Class const deleted = factory.createClass();
    deleted.destroy();

    ZEL::Class const null;
    ZEL::ImmutableClassObject const general = book;
    ZEL::ImmutableType const & reference = book;
    ZEL::ValueObject const value = ZEL::Integer(42);
    std::uintptr_t const dead[2] = {reinterpret_cast<std::uintptr_t>(&model), 7};
    std::uintptr_t const wild[2] = {reinterpret_cast<std::uintptr_t>(book.getImplementation()), 7};

    int const created = ZEL::Cleanup::creationNumber();
    int const alive = ZEL::Cleanup::numberOfActiveObjects();
    int const references = book.getImplementation()->numRef();
    look();
    bool const isAsBefore = created == ZEL::Cleanup::creationNumber() &&
                            references == book.getImplementation()->numRef() &&
                            alive == ZEL::Cleanup::numberOfActiveObjects();
    model.cancelTransaction();
    static_cast<void>(dead[0] + wild[0]);
    return isAsBefore && !null.isValid() && general == reference && value.isValid() && hostile != unnamed ? 0 : 1;
}
