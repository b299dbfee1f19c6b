#pragma once

#include <QAccessibleWidget>
#include <map>

namespace quorvel {

class DrawnPart;

/// A widget that draws its parts itself, for screen readers: one element for each part, made when it is asked for.
class DrawnParts : public QAccessibleWidget {
public:
    DrawnParts(QWidget& widget, QAccessible::Role role);
    ~DrawnParts() override;

    int childCount() const override = 0;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;

protected:
    virtual DrawnPart* makePart(int index) const = 0;
    /// Drops the elements of parts from `index` on.
    void forgetFrom(int index);

private:
    mutable std::map<int, QAccessible::Id> parts_;
};

/// One part, which has none of its own. It is valid while the widget has as many.
class DrawnPart : public QAccessibleInterface {
public:
    DrawnPart(const DrawnParts& whole, int index) : whole_(whole), index_(index) {}

    int index() const { return index_; }

    bool isValid() const override { return whole_.isValid() && index_ < whole_.childCount(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return whole_.window(); }
    QAccessibleInterface* parent() const override { return &const_cast<DrawnParts&>(whole_); }
    int childCount() const override { return 0; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    void setText(QAccessible::Text, const QString&) override {}

private:
    const DrawnParts& whole_;
    const int index_;
};

}  // namespace quorvel
