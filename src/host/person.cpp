#include "host/person.h"

#include "text/row_list.h"

namespace larkspin {

People listed(const RowList& names, std::uint64_t list) {
    People people;
    for (int row = 0; row < names.count(); ++row)
        people.push_back({std::string(names.row(row)), row, list});
    return people;
}

} // namespace larkspin
