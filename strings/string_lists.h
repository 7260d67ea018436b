// Lists of strings, and lists of such lists: printed, turned into arrays, searched.
#pragma once
#include <list>
#include <ostream>
#include <string>

/// An empty list, ready as an argument or a default. Nobody may write into it; it is no constant
/// because callees take their lists by plain reference.
///
///     item_where({{"a"}, {"b", "c"}}, empty_list_String);  // 0
inline std::list<std::string> empty_list_String;

/// Prints "(a, b)" and returns `out`. The strings are neither quoted nor escaped, so that the empty
/// list and the list of one empty string both print "()". Flushes after each string and at the end:
/// what is written shows at once.
///
///     std::ostringstream out;
///     out << std::list<std::string>{"a", "b"};
///     out.str();  // "(a, b)"
std::ostream& operator<<(std::ostream& out, const std::list<std::string>& list);

/// Prints "((a, b), (c))" and returns `out`. Flushes after each inner list and at the end.
///
///     std::ostringstream out;
///     out << std::list<std::list<std::string>>{{"a", "b"}, {"c"}};
///     out.str();  // "((a, b), (c))"
std::ostream& operator<<(std::ostream& out, const std::list<std::list<std::string>>& lists);

/// A new array of the elements of `list`, in its order; null for the empty list. The caller
/// releases it with `delete[]`, and takes its length from the list. Exists for the elements
/// `std::string` and `std::list<std::string>`.
///
///     const std::list<std::string> list = {"a", "b"};
///     const std::unique_ptr<std::string[]> strings(array_convert(list));
///     strings[1];  // "b"
template <class Element>
[[nodiscard, gnu::visibility("default")]] Element* array_convert(const std::list<Element>& list);
extern template std::string* array_convert(const std::list<std::string>&);
extern template std::list<std::string>* array_convert(const std::list<std::list<std::string>>&);

/// The place, from 1, of the first list in `lists` that holds the same strings as `item` in the
/// same order; 0 when there is none.
///
///     item_where({{"a"}, {"b", "c"}}, {"b", "c"});  // 2
int item_where(const std::list<std::list<std::string>>& lists, const std::list<std::string>& item);

/// Puts every function of this header to use for both element types. Prints meaningless lists on
/// the standard error stream; there is no need to call it.
///
///     list_String_inutile();
void list_String_inutile();
