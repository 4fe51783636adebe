#pragma once

#include "NaiveModel.h"

#include <ZEL/metamodel/Factory.h>
#include <ZEL/metamodel/MetaModel.h>

#include <unordered_map>

namespace ZEL::oracle {

/// A model of the kernel whose objects have the numbers of the naive model.
class KernelModel {
public:
    KernelModel();

    [[nodiscard]] Deviant deviant(std::string const & name) const { return fDeviants.at(name).getDeviant(); }
    [[nodiscard]] MetaModel const & model(std::string const & deviant) const { return fDeviants.at(deviant); }
    [[nodiscard]] int numberOf(NSInterface::ClassObjectIntf const * body) const;
    /// The object as a client sees it through `deviant`, which may be a view; nothing if it is absent.
    [[nodiscard]] std::optional<State> observed(Deviant deviant, int object, Kind kind) const;
    [[nodiscard]] std::set<int> deviating(std::string const & deviant) const;

    void create(std::string const & deviant, Kind kind);
    void setFlag(std::string const & deviant, int object, std::string const & property, bool value) const;
    void setText(std::string const & deviant, int object, std::string const & property,
                 std::string const & value) const;
    void removeText(std::string const & deviant, int object, std::string const & property) const;
    void setNumber(std::string const & deviant, int object, std::string const & property, long long value) const;
    void removeNumber(std::string const & deviant, int object, std::string const & property) const;
    void setReference(std::string const & deviant, int object, std::string const & property, int value) const;
    void removeReference(std::string const & deviant, int object, std::string const & property) const;
    void link(std::string const & deviant, int object, std::string const & property, int value, bool atFront) const;
    void unlink(std::string const & deviant, int object, std::string const & property, int index) const;
    void addBody(std::string const & deviant, int object, int index, std::string const & text) const;
    void eraseBody(std::string const & deviant, int object, int index) const;
    void setContainer(std::string const & deviant, int object, int container) const;
    void removeContainer(std::string const & deviant, int object) const;
    void destroy(std::string const & deviant, int object) const;

    /// Another model with an object of each kind that one-ended ends accept, numbered from `first` on; the one before it
    /// ends, whoever refers to its objects.
    void replaceForeign(int first);

    void createDeviant(std::string const & name);
    void removeDeviant(std::string const & name);

private:
    [[nodiscard]] ClassObject object(Deviant deviant, int number) const;
    [[nodiscard]] ClassObject object(std::string const & name, int number) const {
        return object(deviant(name), number);
    }

    std::map<std::string, MetaModel> fDeviants;
    std::vector<ClassObject> fObjects;
    std::map<int, ClassObject> fForeignObjects;
    MetaModel fForeign;
    std::unordered_map<NSInterface::ClassObjectIntf const *, int> fNumbers;
};

} // namespace ZEL::oracle
