#include "strings/string_lists.h"

#include <algorithm>
#include <iostream>
#include <memory>

namespace {

template <class Element>
std::ostream& print(std::ostream& out, const std::list<Element>& list) {
    out << "(";
    const char* separator = "";
    for (const Element& element : list) {
        out << separator << element << std::flush;
        separator = ", ";
    }
    return out << ")" << std::flush;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const std::list<std::string>& list) {
    return print(out, list);
}

std::ostream& operator<<(std::ostream& out, const std::list<std::list<std::string>>& lists) {
    return print(out, lists);
}

template <class Element>
Element* array_convert(const std::list<Element>& list) {
    if (list.empty()) return nullptr;
    auto array = std::make_unique<Element[]>(list.size());
    std::ranges::copy(list, array.get());
    return array.release();
}
template std::string* array_convert(const std::list<std::string>&);
template std::list<std::string>* array_convert(const std::list<std::list<std::string>>&);

int item_where(const std::list<std::list<std::string>>& lists, const std::list<std::string>& item) {
    const auto found = std::ranges::find(lists, item);
    return found == lists.end() ? 0 : static_cast<int>(std::distance(lists.begin(), found)) + 1;
}

void list_String_inutile() {
    const std::list<std::string> words = {"a", "b"};
    const std::list<std::list<std::string>> lists = {words, {"c"}, empty_list_String};
    std::cerr << words << std::endl << lists << std::endl;
    const std::unique_ptr<std::string[]> word_array(array_convert(words));
    const std::unique_ptr<std::list<std::string>[]> list_array(array_convert(lists));
    std::cerr << word_array[0] << " " << list_array[0] << " " << item_where(lists, words)
              << std::endl;
}
