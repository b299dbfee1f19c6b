#pragma once

#include <QComboBox>

namespace quorvel {

/// A list to choose one of, as wide as every other, whatever its entries are: it may hold thousands of them.
class ListPicker : public QComboBox {
    Q_OBJECT
public:
    explicit ListPicker(QWidget* parent = nullptr);

    /// Shows an entry; for one that the list doesn't have (-1), `missing` in its place.
    void show(int index, const QString& missing = {});
    using QComboBox::show;

    QSize sizeHint() const override;
};

}  // namespace quorvel
