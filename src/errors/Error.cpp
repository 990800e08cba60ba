#include "errors/Error.h"

#include <new>
#include <stdexcept>

namespace vrn::errors {

void throwObjectNotSet() { throw Error(number::objectNotSet, "Object variable or With block variable not set"); }
void throwInvalidProcedureCall() { throw Error(number::invalidProcedureCall, "Invalid procedure call or argument"); }
void throwSubscriptOutOfRange() { throw Error(number::subscriptOutOfRange, "Subscript out of range"); }
void throwTypeMismatch() { throw Error(number::typeMismatch, "Type mismatch"); }
void throwOverflow() { throw Error(number::overflow, "Overflow"); }

Error currentError() {
    try {
        throw;
    } catch (const Error& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return {number::outOfMemory, "Out of memory"};
    } catch (const std::out_of_range&) {
        return {number::subscriptOutOfRange, "Subscript out of range"};
    } catch (const std::exception& exception) {
        return {number::internalError, exception.what()};
    } catch (...) {
        return {number::internalError, "Internal error"};
    }
}

}  // namespace vrn::errors
