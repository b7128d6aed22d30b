// fmt as one object, for a program that brings it along: Debian has no static library of it, and
// with its headers alone each source would compile all of it again.
#include <fmt/format-inl.h>

// Its headers leave these to its library.
FMT_BEGIN_NAMESPACE
namespace detail {
template FMT_API auto thousands_sep_impl(locale_ref) -> thousands_sep_result<char>;
template FMT_API auto decimal_point_impl(locale_ref) -> char;
}  // namespace detail
FMT_END_NAMESPACE
