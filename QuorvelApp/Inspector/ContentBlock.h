#pragma once

#include "Inspector/BoundControls.h"

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

class QHBoxLayout;
class QMenu;

namespace quorvel {

/// The words of a layer, and the menus that put a field or an icon at their end.
class ContentBlock : public QWidget {
    Q_OBJECT
public:
    enum class Icons { none, offered };
    using FieldNames = std::function<std::vector<std::string>()>;

    /// `fieldNames` is asked each time the menu opens.
    ContentBlock(BoundControls& controls, Binding<std::string> content, FieldNames fieldNames, Icons icons);

private:
    /// `fill` makes the entries of the menu each time it opens.
    void addMenu(BoundControls& controls, QHBoxLayout& row, const QString& title, std::function<void(QMenu&)> fill);
    void append(const std::string& words);

    Binding<std::string> content_;
    ContentEditor* editor_ = nullptr;
};

}  // namespace quorvel
