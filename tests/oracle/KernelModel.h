#pragma once

#include "NaiveModel.h"

#include <ZEL/ZEL.h>

#include <unordered_map>

namespace ZEL::tests::oracle {

/// What listeners do; they see what was before through `view`.
using KernelListeners = std::function<bool(Hearing const & hearing, Deviant view)>;
inline constexpr int kListeners = 3; ///< of each deviant, in any roles

/// A model of the kernel whose objects have the numbers of the naive model.
class KernelModel {
public:
    explicit KernelModel(KernelListeners listeners);
    ~KernelModel();
    KernelModel(KernelModel const &) = delete;
    KernelModel & operator=(KernelModel const &) = delete;

    [[nodiscard]] Deviant deviant(std::string const & name) const { return fDeviants.at(name).getDeviant(); }
    /// The object as a client sees it through `deviant`, which may be a view; nothing if it is absent.
    [[nodiscard]] std::optional<State> observed(Deviant deviant, int object, Kind kind) const;
    [[nodiscard]] std::set<int> deviating(std::string const & deviant) const;

    void perform(Step const & s);

private:
    class Listener;

    void create(Step const & s);
    /// Another model with an object of each kind that one-ended ends accept; the one before it ends, whoever refers to
    /// its objects.
    void replaceForeign(Step const & s);
    void createDeviant(Step const & s);
    void removeDeviant(Step const & s);

    [[nodiscard]] ClassObject object(Deviant deviant, int number) const;
    [[nodiscard]] Deviant deviant(Step const & s) const { return deviant(s.deviant); }
    /// What the step is on, and what it writes there.
    [[nodiscard]] ClassObject object(Step const & s) const { return object(deviant(s), s.object); }
    [[nodiscard]] ClassObject element(Step const & s) const { return object(deviant(s), s.value); }
    [[nodiscard]] int numberOf(ImmutableClassObject const & object) const;
    template <class Objects> [[nodiscard]] std::set<int> numbersOf(Objects const & objects) const {
        std::set<int> numbers;
        for (auto const & object : objects) {
            numbers.insert(numberOf(object));
        }
        return numbers;
    }
    [[nodiscard]] Listener & listener(Step const & s);

    KernelListeners fCall;
    std::map<std::string, std::vector<std::shared_ptr<Listener>>> fListeners;
    std::map<std::string, MetaModel> fDeviants;
    std::vector<ClassObject> fObjects;
    std::map<int, ClassObject> fForeignObjects;
    MetaModel fForeign;
    std::unordered_map<NSInterface::ClassObjectIntf const *, int> fNumbers;
};

} // namespace ZEL::tests::oracle
