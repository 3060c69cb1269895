// QTest, whose mouse acts on the window of the screen, as a real one does: Qt looks for the widget that is
// hit.
#pragma once

#define QTEST_QPA_MOUSE_HANDLING
#include <QTest>
