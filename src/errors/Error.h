// The one exception type of the editor and the numbers it carries.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

namespace vrn::errors {

/// Run-time error numbers that the editor raises itself, with the texts that hosts know them by.
namespace number {
inline constexpr std::int32_t invalidProcedureCall = 5;
inline constexpr std::int32_t overflow = 6;
inline constexpr std::int32_t outOfMemory = 7;
inline constexpr std::int32_t subscriptOutOfRange = 9;
inline constexpr std::int32_t typeMismatch = 13;
inline constexpr std::int32_t internalError = 51;
inline constexpr std::int32_t objectNotSet = 91;
inline constexpr std::int32_t propertyNotSupported = 438;
}  // namespace number

/// The public enumeration of the control: COM object-error base + 513.
enum vrnMethEdError : std::int32_t {
    vrnMethEdErrorInvalidXML = -2147220991,
};

/// "Cycle does not exist.": COM object-error base + 1000.
inline constexpr std::int32_t cycleDoesNotExist = -2147220504;
/// Empty macro catalogue or object list: COM object-error base + 600000.
inline constexpr std::int32_t emptyCatalogues = -2146621504;

/// A failure on its way to the host: the five values that an error record holds.
class Error : public std::exception {
  public:
    Error(std::int32_t number, std::string description, std::string source = "vrnMethodEditor",
          std::string helpFile = {}, std::int32_t helpContext = 0)
        : number_(number),
          description_(std::move(description)),
          source_(std::move(source)),
          helpFile_(std::move(helpFile)),
          helpContext_(helpContext) {}

    [[nodiscard]] std::int32_t number() const noexcept { return number_; }
    [[nodiscard]] const std::string& description() const noexcept { return description_; }
    [[nodiscard]] const std::string& source() const noexcept { return source_; }
    [[nodiscard]] const std::string& helpFile() const noexcept { return helpFile_; }
    [[nodiscard]] std::int32_t helpContext() const noexcept { return helpContext_; }
    [[nodiscard]] const char* what() const noexcept override { return description_.c_str(); }

  private:
    std::int32_t number_;
    std::string description_;
    std::string source_;
    std::string helpFile_;
    std::int32_t helpContext_;
};

/// A node or object that should be there is not (91).
[[noreturn]] void throwObjectNotSet();
/// An argument no procedure can work with (5).
[[noreturn]] void throwInvalidProcedureCall();
/// An index beyond an array or list (9).
[[noreturn]] void throwSubscriptOutOfRange();
/// A value that does not convert (13).
[[noreturn]] void throwTypeMismatch();
/// A number beyond its type (6).
[[noreturn]] void throwOverflow();

/// The exception being handled as an `Error`: an `Error` as it is, `std::bad_alloc` as 7 "Out of memory", `std::out_of_range` as
/// 9 "Subscript out of range", any other as 51 with its own text. Call it inside a catch clause only.
[[nodiscard]] Error currentError();

}  // namespace vrn::errors
