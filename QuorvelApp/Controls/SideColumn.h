#pragma once

#include <QSplitter>

namespace quorvel {

/// A column that the user may make wider or narrower, and beside it what takes the rest of the width.
class SideColumn : public QSplitter {
    Q_OBJECT
public:
    /// In logical pixels.
    struct Widths {
        int least = 0;
        int ideal = 0;  ///< at first
        int most = 0;
    };

    SideColumn(QWidget* column, const Widths& widths, QWidget* rest, int leastRest, QWidget* parent = nullptr);
};

}  // namespace quorvel
