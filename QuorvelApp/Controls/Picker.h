#pragma once

#include <QComboBox>

namespace quorvel {

/// A picker in a form, as wide as every other, whatever its entries are: it may hold thousands of them. Where it is
/// narrow it cuts its text, not its list. It is deaf to the wheel even while it has the keyboard, since a user who has
/// just chosen goes on to scroll.
class Picker : public QComboBox {
    Q_OBJECT
public:
    /// `title` is the accessible name. It likes to grow; one that shouldn't is given another size policy.
    explicit Picker(const QString& title, QWidget* parent = nullptr);

    /// Shows an entry; for one that the list doesn't have (-1), `missing` in its place.
    void show(int index, const QString& missing = {});
    using QComboBox::show;

    QSize sizeHint() const override;
    void showPopup() override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    int popupWidth() const;
};

}  // namespace quorvel
