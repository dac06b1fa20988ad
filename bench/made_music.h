// Music that doesn't exist, in any amount: rows with realistic names, and trees of
// empty files.
#pragma once

#include "text/row_list.h"

#include <filesystem>
#include <string>
#include <vector>

namespace larkspin {

// As many directories as go with that many rows: 2,000 at a full list.
int directoriesFor(int rows);

// Rows as a scan finds them: directory by directory, by name within each, so that neighbours
// in the scan lie far apart in a sorted list.
std::vector<Row> scannedRows(int rows);

// The same as lines of a playlist file, by name as a save leaves them, or in no order.
RowList savedOrder(const std::vector<Row>& rows);
RowList shuffledOrder(const std::vector<Row>& rows);

// 0 to count - 1 in an order that looks random and is always the same.
std::vector<int> shuffledIndexes(int count);

// 20 empty files in each directory. Half of them, with half of the directories, lie below
// `half`, and half of those below `half/half`.
void makeTree(const std::filesystem::path& root, int files);

} // namespace larkspin
