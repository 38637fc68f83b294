// The compiled part of fmt, for both platforms: its package brings it for Linux alone. What it
// declares as instantiated elsewhere is instantiated here.
#include <fmt/format-inl.h>

template fmt::detail::thousands_sep_result<char> fmt::detail::thousands_sep_impl(locale_ref);
template char fmt::detail::decimal_point_impl(locale_ref);
