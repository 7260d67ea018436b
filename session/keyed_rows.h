// Tables that the compiler holds together with the enumeration of their rows.
#pragma once
#include <cstddef>
#include <iterator>

/// Whether `rows` has one row for each enumerator of its rows' `key`, in their order. The
/// enumeration counts from 0 and ends with `count`. For a static_assert below the table: a row that
/// is missing, twice there or misplaced does not compile.
///
///     enum class fruit { apple, pear, count };
///     struct fruit_row { fruit key; const char* word; };
///     constexpr fruit_row fruits[] = {{fruit::apple, "pomme"}, {fruit::pear, "poire"}};
///     static_assert(one_row_each(fruits));
template <class Rows>
constexpr bool one_row_each(const Rows& rows) {
    using key = decltype(std::begin(rows)->key);
    if (std::size(rows) != static_cast<std::size_t>(key::count)) return false;
    std::size_t place = 0;
    for (const auto& row : rows)
        if (static_cast<std::size_t>(row.key) != place++) return false;
    return true;
}

/// The row of `key` in such a table.
template <class Rows, class Key>
constexpr const auto& row_of(const Rows& rows, Key key) {
    return rows[static_cast<std::size_t>(key)];
}
