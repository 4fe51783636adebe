#pragma once

#include <ZEL/Export.h>
#include <ZEL/serializer/NamespaceContext.h>

#include <deque>
#include <string>

namespace ZEL::Serializer {

/// A stack of scopes of namespace bindings that follows the nesting of elements. All but the stack operations act on
/// the current scope.
class ZEL_API NamespaceManager {
public:
    void addNamespace(std::string const & prefix, std::string const & uri) { fCurrent.addNamespace(prefix, uri); }
    void removeNamespace(std::string const & prefix, std::string const & uri) { fCurrent.removeNamespace(prefix, uri); }
    [[nodiscard]] std::string const & lookupNamespace(std::string const & prefix) const {
        return fCurrent.lookupNamespace(prefix);
    }
    [[nodiscard]] std::string const & lookupPrefix(std::string const & uri) const { return fCurrent.lookupPrefix(uri); }
    [[nodiscard]] std::string const & defaultNamespace() const { return fCurrent.defaultNamespace(); }

    /// Saves the current scope, which keeps its bindings. Constant time.
    void pushContext() { fSaved.push_back(fCurrent); }
    /// Returns to the scope saved last. Throws "popContext() invalid on empty Namespace stack" if there is none.
    void popContext();
    /// Empties the stack and starts a new scope.
    void clear();

private:
    std::deque<NamespaceContext> fSaved;
    NamespaceContext fCurrent;
};

} // namespace ZEL::Serializer
