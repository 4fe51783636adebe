#include <ZEL/base/Exception.h>

#include <libvx/ObjectOutput.h>

namespace ZEL {

namespace {
constexpr char const * defaultId = "fen:zel:assertion";
constexpr char const * internalErrorText = "An Internal Error has occurred";
} // namespace

Exception::Exception(std::string const & message) : fMessage(message), fId(defaultId) {}

Exception::Exception(char const * message) : fMessage(message), fId(defaultId) {}

Exception::Exception(std::string const & message, std::string const & id) : fMessage(message), fId(id) {}

Exception::Exception(char const * message, char const * id) : fMessage(message), fId(id) {}

Exception::~Exception() = default;

void Exception::writeExternal(Quillon::System::ObjectOutput & out) const {
    out.writeString(fMessage);
    out.writeString("\n");
}

std::string const & Exception::GetID() const { return fId; }

std::string const & Exception::GetMessageTxt() const { return fMessage; }

char const * Exception::what() const noexcept { return fMessage.c_str(); }

UnImplementedException::UnImplementedException(std::string const & message) : Exception(message) {}

UnImplementedException::UnImplementedException(char const * message) : Exception(message) {}

UnImplementedException::~UnImplementedException() = default;

void raiseInternalError(std::string const & message) { throw Exception(message); }

void raiseInternalError(char const * message) { throw Exception(message); }

void raiseUnimplemented(char const * message) { throw UnImplementedException(message); }

void raiseNullReference() { raiseInternalError("Cannot access NULL ref. Use isValid() before calling methods"); }

void raiseAnInternalError() { raiseInternalError(internalErrorText); }

bool isAnInternalError(Exception const & failure) { return failure.GetMessageTxt() == internalErrorText; }

} // namespace ZEL
