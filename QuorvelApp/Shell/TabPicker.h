#pragma once

#include "Model/Tab.h"

#include <QWidget>
#include <map>

class QAbstractButton;

namespace quorvel {

/// The tabs as one row of segments, of which one is chosen: by mouse, or by arrow keys once it has the focus.
class TabPicker : public QWidget {
    Q_OBJECT
public:
    explicit TabPicker(QWidget* parent = nullptr);

    void setTab(Tab tab);

signals:
    /// The user chose another one.
    void picked(Tab tab);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::map<Tab, QAbstractButton*> segments_;
};

}  // namespace quorvel
