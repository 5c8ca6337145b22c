// Delete Custom Path: the custom paths of the Path combo in a list, of
// which "Delete" takes the selected ones away.
#pragma once

class QComboBox;
class QWidget;

// The item data (Qt::UserRole) of a combo row that is to go.
constexpr int kRowMarkedForDeletion = 1;

// Lists the custom rows of the Path combo (from row 9 on). True on OK; the
// rows whose paths were deleted in the list then carry the mark in their
// item data. With Cancel no mark counts.
bool AskDeletePaths(QWidget* window, QComboBox* paths);
