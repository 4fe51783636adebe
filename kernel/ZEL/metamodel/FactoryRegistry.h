#pragma once

#include <ZEL/Export.h>
#include <ZEL/base/Callback.h>

#include <map>
#include <string>
#include <utility>

namespace ZEL {

class FactoryObject;
class Model;

/// Makes models and factories by the URI of their metamodel.
///
/// One for the process, made on first use and destroyed when the process ends.
class ZEL_API FactoryRegistry {
public:
    using ModelCreator = Callback<Model()>;
    using FactoryCreator = Callback<FactoryObject(Model)>;

    [[nodiscard]] static FactoryRegistry * instance();
    /// Destroys the instance with all that is registered; the next `instance()` makes an empty one.
    static void deleter();

    /// Both replace an earlier creator of the URI.
    template <class Creator> void registerModelCreator(std::string const & uri, Creator creator) {
        enterModelCreator(uri, ModelCreator(std::move(creator)));
    }
    template <class Creator> void registerFactoryCreator(std::string const & uri, Creator creator) {
        enterFactoryCreator(uri, FactoryCreator(std::move(creator)));
    }
    /// Nothing for an unknown URI.
    void unregisterModelCreator(std::string const & uri);
    void unregisterFactoryCreator(std::string const & uri);

    /// An invalid handle for an unknown URI.
    [[nodiscard]] Model createModel(std::string const & uri) const;
    [[nodiscard]] FactoryObject createFactory(std::string const & uri, Model const & model) const;

private:
    FactoryRegistry();
    ~FactoryRegistry();
    FactoryRegistry(FactoryRegistry const &) = delete;
    FactoryRegistry & operator=(FactoryRegistry const &) = delete;

    void enterModelCreator(std::string const & uri, ModelCreator creator);
    void enterFactoryCreator(std::string const & uri, FactoryCreator creator);

    static FactoryRegistry * fInstance;
    std::map<std::string, ModelCreator> fModelCreators;     ///< by URI
    std::map<std::string, FactoryCreator> fFactoryCreators; ///< by URI
};

} // namespace ZEL
