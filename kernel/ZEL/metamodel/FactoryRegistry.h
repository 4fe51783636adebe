#pragma once

#include <ZEL/Export.h>

#include <boost/function/function0.hpp>
#include <boost/function/function1.hpp>

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
    using ModelCreator = boost::function<Model()>;
    using FactoryCreator = boost::function<FactoryObject(Model)>;

    [[nodiscard]] static FactoryRegistry * instance();
    /// Destroys the instance with all that is registered; the next `instance()` makes an empty one.
    static void deleter();

    /// Both replace an earlier creator of the URI.
    template <class Creator> void registerModelCreator(std::string const & uri, Creator creator) {
        fModelCreators[uri] = ModelCreator(std::move(creator));
    }
    template <class Creator> void registerFactoryCreator(std::string const & uri, Creator creator) {
        fFactoryCreators[uri] = FactoryCreator(std::move(creator));
    }
    /// Nothing for an unknown URI.
    void unregisterModelCreator(std::string const & uri) { fModelCreators.erase(uri); }
    void unregisterFactoryCreator(std::string const & uri) { fFactoryCreators.erase(uri); }

    /// An invalid handle for an unknown URI.
    [[nodiscard]] Model createModel(std::string const & uri) const;
    [[nodiscard]] FactoryObject createFactory(std::string const & uri, Model const & model) const;

private:
    FactoryRegistry() = default;
    ~FactoryRegistry() = default;
    FactoryRegistry(FactoryRegistry const &) = delete;
    FactoryRegistry & operator=(FactoryRegistry const &) = delete;

    static FactoryRegistry * fInstance;
    std::map<std::string, ModelCreator> fModelCreators;     ///< by URI
    std::map<std::string, FactoryCreator> fFactoryCreators; ///< by URI
};

} // namespace ZEL
