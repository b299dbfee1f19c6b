#pragma once

#include "TemplateTab/LayerRow.h"

#include <QScrollArea>
#include <optional>
#include <vector>

class QVBoxLayout;

namespace quorvel {

/// Rows of layers from the top down, of which one is selected or none: by a click, or with the arrow keys, Home, End,
/// Page Up and Page Down.
class LayerRows : public QScrollArea {
    Q_OBJECT
public:
    explicit LayerRows(QWidget* parent = nullptr);

    /// A row goes with its layer wherever it moves. A selected layer that isn't there is as good as none.
    void showLayers(const std::vector<LayerRow::Content>& layers, const std::optional<UUID>& selected);

    const std::vector<LayerRow*>& rows() const { return rows_; }
    /// Null when none is.
    LayerRow* selectedRow() const;

Q_SIGNALS:
    /// The user has selected a layer, or none.
    void selected(const std::optional<UUID>& layer);
    void eyePressed(const UUID& layer);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void arrange(const std::vector<LayerRow::Content>& layers);
    LayerRow* makeRow();
    void drop(LayerRow* row);
    void select(const std::optional<UUID>& layer);
    void showSelection();
    void announceSelected();
    /// The row that a key leads to; nothing for a key that leads nowhere.
    std::optional<std::size_t> destination(int key) const;

    std::vector<LayerRow*> rows_;
    std::optional<UUID> selected_;
    bool ringed_ = false;
    QVBoxLayout* column_ = nullptr;
};

}  // namespace quorvel
