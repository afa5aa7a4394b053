#include "faults/FaultTable.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>

namespace lumora::tests {

const std::vector<FaultRow>& faultTable() {
    static const std::vector<FaultRow> table = [] {
        std::vector<FaultRow> all;
        for (const auto& rows :
             {connectionRows(), timeRows(), framingRows(), excessRows(), statusRows(),
              refusalRows(), redirectRows(), bodyRows(), encryptionRows(), proxyRows()})
            all.insert(all.end(), rows.begin(), rows.end());
        return all;
    }();
    return table;
}

const FaultRow& faultRow(std::string_view name) {
    const auto& table = faultTable();
    const auto found = std::ranges::find(table, name, &FaultRow::name);
    if (found == table.end())
        throw std::runtime_error("no row " + std::string(name));
    return *found;
}

std::string rowTestName(std::string_view name) {
    std::string result;
    bool begins = true;
    for (const char letter : name) {
        const auto byte = static_cast<unsigned char>(letter);
        const bool isPart = std::isalnum(byte) != 0;
        if (isPart)
            result += static_cast<char>(begins ? std::toupper(byte) : byte);
        begins = !isPart && byte != '\'';
    }
    return result;
}

} // namespace lumora::tests
