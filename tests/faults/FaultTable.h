#pragma once

#include "faults/FaultRow.h"

#include <string>
#include <string_view>

namespace lumora::tests {

// What may go wrong between the program and a service, what the program says of it, and what that
// costs: for each group a file of rows, which together are the table.
//
//   name | how a fetch ends | tries of the client | requests that get there | what is there

std::vector<FaultRow> connectionRows();
std::vector<FaultRow> timeRows();
std::vector<FaultRow> framingRows();
std::vector<FaultRow> excessRows();
std::vector<FaultRow> statusRows();
std::vector<FaultRow> refusalRows();
std::vector<FaultRow> redirectRows();
std::vector<FaultRow> bodyRows();
std::vector<FaultRow> encryptionRows();
std::vector<FaultRow> proxyRows();

/// All rows.
const std::vector<FaultRow>& faultTable();

/// The row of this name; throws when there is none.
const FaultRow& faultRow(std::string_view name);

/// The name of a row as part of a test's: "a key twice" is AKeyTwice.
std::string rowTestName(std::string_view name);

} // namespace lumora::tests
