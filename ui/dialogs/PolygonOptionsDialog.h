// Polygon Options: a polygon or a star, and its number of sides or points.
#pragma once

class QWidget;

// Both values go in and come out; true on OK. A count below 3 or above 20
// is refused with its alert, and the dialog stays.
bool AskPolygonOptions(QWidget* window, bool& polygonNotStar, int& sides);
