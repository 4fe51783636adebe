#pragma once

#include <ZEL/Export.h>

#include <libvx/IUserException.h>
#include <libvx/UserException.h>

#include <exception>
#include <string>

namespace ZEL {

/// Every failure of the kernel: a text, and an identifier by which the host's error handling classifies it.
///
/// Throwing it rolls nothing back. It is also a `std::exception`, so that a caller that does not know the host's
/// exception classes still gets the text.
class ZEL_API Exception : public Quillon::System::UserException,
                          public Quillon::System::IUserException,
                          public std::exception {
public:
    /// With the identifier "fen:zel:assertion".
    explicit Exception(std::string const & message);
    explicit Exception(char const * message);
    Exception(std::string const & message, std::string const & id);
    Exception(char const * message, char const * id);
    ~Exception() override;

    /// Writes the text and a line end; the identifier is not written.
    void writeExternal(Quillon::System::ObjectOutput & out) const override;
    [[nodiscard]] std::string const & GetID() const override;
    [[nodiscard]] std::string const & GetMessageTxt() const override;
    [[nodiscard]] char const * what() const noexcept override;

private:
    std::string fMessage;
    std::string fId;
};

/// An operation that is declared but not implemented; thrown by `raiseUnimplemented` only.
class ZEL_API UnImplementedException : public Exception {
public:
    explicit UnImplementedException(std::string const & message);
    explicit UnImplementedException(char const * message);
    ~UnImplementedException() override;
};

[[noreturn]] ZEL_API void raiseInternalError(std::string const & message);
[[noreturn]] ZEL_API void raiseInternalError(char const * message);
[[noreturn]] ZEL_API void raiseUnimplemented(char const * message);

/// Throws "Cannot access NULL ref. Use isValid() before calling methods".
[[noreturn]] ZEL_API void raiseNullReference();
/// Throws "An Internal Error has occurred", the text of every violated precondition without a text of its own.
[[noreturn]] ZEL_API void raiseAnInternalError();
/// Whether the failure has the text of `raiseAnInternalError`, and so none of its own.
[[nodiscard]] ZEL_API bool isAnInternalError(Exception const & failure);

} // namespace ZEL
