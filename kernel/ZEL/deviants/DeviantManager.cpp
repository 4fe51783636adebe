#include <ZEL/base/Exception.h>
#include <ZEL/deviants/DeviantImpl.h>
#include <ZEL/deviants/DeviantManager.h>

#include <memory>
#include <utility>

namespace ZEL {

using internal::DeviantImpl;
using Kind = internal::DeviantIdentity::Kind;

DeviantManager::DeviantManager() : DeviantManager(nullptr, nullptr) {}

DeviantManager::DeviantManager(NSInterface::ModelIntf * model, NSInterface::ClassObjectIntf * body)
    : fModel(model), fBody(body) {
    std::string const name = "root deviant";
    auto root = std::make_unique<DeviantImpl>(*this, name, 0, Kind::LiveRoot);
    fRoot = root.get();
    fByName.emplace(name, std::move(root));
}

DeviantManager::~DeviantManager() {
    // The model's body is in its own destructor by now and must not be counted.
    fModel = nullptr;
    fBody = nullptr;
    destroy();
}

Deviant DeviantManager::getRootDeviant() const noexcept { return fRoot == nullptr ? Deviant() : fRoot->deviant(); }

void DeviantManager::internal_setReplayer(internal::Replayer * replayer) {
    if (replayer != fReplayer.get()) {
        fReplayer = internal::SoleOwner<internal::Replayer>(replayer);
    }
}

// --- names -----------------------------------------------------------------------------------------------------------

Deviant DeviantManager::createDeviantWithName(std::string const & name) {
    auto const known = fByName.find(name);
    if (known != fByName.end() && known->second != nullptr) {
        return known->second->deviant();
    }
    makeRoomForOneMore();
    std::size_t const number = fRemoved.size() + fByName.size() + (known == fByName.end() ? 1 : 0);
    auto made = std::make_unique<DeviantImpl>(*this, name, static_cast<std::int32_t>(number), Kind::LiveNamed);
    Deviant const deviant = made->deviant();
    fByName.try_emplace(name).first->second = std::move(made);
    collectNamed();
    return deviant;
}

Deviant DeviantManager::getDeviantWithName(std::string const & name) {
    DeviantImpl const * const found = fByName[name].get();
    return found == nullptr ? Deviant() : found->deviant();
}

void DeviantManager::removeDeviantWithName(std::string const & name) {
    auto const entry = fByName.find(name);
    if (entry == fByName.end()) {
        raiseInternalError("removeDeviantWithName: deviant does not exist");
    }
    if (entry->second.get() == fRoot) {
        raiseAnInternalError();
    }
    // A listener that hears of the end may let the last handle of the model go.
    internal::PhaseScope const phase(fRoot->phases());
    Deviant const deviant = entry->second == nullptr ? Deviant() : entry->second->deviant();
    try {
        deviant.remove();
    } catch (...) {
        // A listener's failure comes out when all is done.
        if (!deviant.isValid()) {
            shelve(name, deviant);
        }
        throw;
    }
    shelve(name, deviant);
}

void DeviantManager::shelve(std::string const & name, Deviant deviant) noexcept {
    // Looked up again: a listener that has heard of the end may have changed the names.
    auto const entry = fByName.find(name);
    if (entry != fByName.end() && entry->second != nullptr && entry->second->deviant() == deviant) {
        fRemoved.push_back(std::move(entry->second));
        fByName.erase(entry);
        collectNamed();
    }
}

std::vector<Deviant> DeviantManager::getDeviants() const {
    std::vector<Deviant> result;
    result.reserve(fByName.size());
    for (auto const & [name, deviant] : fByName) {
        result.push_back(deviant == nullptr ? Deviant() : deviant->deviant());
    }
    return result;
}

void DeviantManager::makeRoomForOneMore() {
    // All deviants that are or have been, so that one can go without memory.
    std::size_t const all = fRemoved.size() + fByName.size() + 1;
    if (fNamed.capacity() < all) {
        fNamed.reserve(2 * all);
    }
    if (fRemoved.capacity() < all) {
        fRemoved.reserve(2 * all);
    }
}

void DeviantManager::collectNamed() noexcept {
    fNamed.clear();
    for (auto const & [name, deviant] : fByName) {
        if (deviant != nullptr && deviant.get() != fRoot) {
            fNamed.push_back(deviant->deviant());
        }
    }
}

// --- end -------------------------------------------------------------------------------------------------------------

void DeviantManager::destroy() noexcept {
    if (fRoot == nullptr) {
        return;
    }
    while (!fNamed.empty()) {
        destroyNamed(*fNamed.front().getImpl());
    }
    fRoot->commitAll();
    fRoot->settledHistory().disable();
    fRemoved.clear();
    fByName.clear();
    fRoot = nullptr;
}

void DeviantManager::destroyNamed(DeviantImpl & deviant) noexcept {
    deviant.commitAll();
    deviant.settledHistory().disable();
    try {
        deviant.remove();
    } catch (...) {
        // Nobody is left to hear of a listener's trouble; all listeners have been told and dropped.
    }
    fByName.erase(deviant.name());
    collectNamed();
}

} // namespace ZEL
