#pragma once

#include <QWidget>

/// Stands for the window that the toolkit has in a tray on X11, by whose name it is known.
class QSystemTrayIconSys : public QWidget {
    Q_OBJECT
};
