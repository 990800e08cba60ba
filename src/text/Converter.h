// The system's converters between encodings. Each system has its own implementation. Both read ASCII as ASCII, whatever the
// encoding: a document could not declare one that does not.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace vrn::text {

/// What every encoding has at the same place.
inline constexpr std::string_view asciiText =
    "\t\n\r !\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`abcdefghijklmnopqrstuvwxyz{|}~";

class Converter {
  public:
    /// From the encoding, its name in lower case, to UTF-8. Invalid, and false, when the system does not know the encoding, or
    /// ASCII is something else in it.
    [[nodiscard]] static Converter toUtf8(const std::string& encoding);
    /// From UTF-8 to the encoding.
    [[nodiscard]] static Converter fromUtf8(const std::string& encoding);

    explicit operator bool() const noexcept { return impl_ != nullptr; }

    /// Appends the conversion of the input, up to the first thing that cannot be converted. Answers how many bytes of the
    /// input were taken.
    [[nodiscard]] std::size_t convert(std::string_view input, std::string& out) const;
    /// Appends what an encoding with shift states needs at the end.
    void finish(std::string& out) const;

  private:
    struct Impl;
    struct Delete {
        void operator()(Impl* impl) const noexcept;
    };
    std::unique_ptr<Impl, Delete> impl_;
};

}  // namespace vrn::text
