#include "Controls/GroupedForm.h"

#include "Controls/CodeSpans.h"
#include "Controls/Style.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QRadioButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>
#include <vector>

namespace quorvel {

namespace {

constexpr int rowHeight = 42;
constexpr int leastLabelWidth = 72;

/// The rounded ground of a section's rows, with a hairline between any two that are seen.
class RowPanel : public QWidget {
public:
    explicit RowPanel(QWidget* parent) : QWidget(parent) {
        auto* rows = new QVBoxLayout(this);
        rows->setContentsMargins(0, 0, 0, 0);
        rows->setSpacing(0);
    }

    /// The rows from top to bottom, hidden ones included.
    std::vector<QWidget*> rows() const {
        std::vector<QWidget*> rows;
        for (int index = 0; index < layout()->count(); ++index) rows.push_back(layout()->itemAt(index)->widget());
        return rows;
    }

    void add(QWidget* row) { static_cast<QVBoxLayout*>(layout())->addWidget(row); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const QColor line = Style::line(palette());
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(line, 1));
        painter.setBrush(Style::surface(palette()));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Style::radius, Style::radius);
        bool first = true;
        for (const QWidget* row : rows()) {
            if (row->isHidden()) continue;
            if (!first) painter.fillRect(QRect(Style::medium, row->y(), width() - 2 * Style::medium, 1), line);
            first = false;
        }
    }
};

/// A wheel that turns over a picker without the keyboard is meant for the form, and so is one that began over the
/// picker and goes on after the pointer has left it.
class WheelPassesBy : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() != QEvent::Wheel) return false;
        const auto* picker = static_cast<QWidget*>(object);
        const QPoint place = static_cast<QWheelEvent*>(event)->position().toPoint();
        if (picker->hasFocus() && picker->rect().contains(place)) return false;
        event->ignore();
        return true;
    }
};

void letWheelPass(QWidget* control) {
    std::vector<QWidget*> pickers;
    for (QComboBox* picker : control->findChildren<QComboBox*>()) pickers.push_back(picker);
    for (QAbstractSpinBox* picker : control->findChildren<QAbstractSpinBox*>()) pickers.push_back(picker);
    if (qobject_cast<QComboBox*>(control) || qobject_cast<QAbstractSpinBox*>(control)) pickers.push_back(control);
    for (QWidget* picker : pickers) {
        picker->setFocusPolicy(Qt::StrongFocus);
        picker->installEventFilter(new WheelPassesBy(picker));
    }
}

bool takesTab(const QWidget& widget) {
    // Of those that exclude each other only the chosen one does; each keeps its place, since it may be chosen later.
    if (qobject_cast<const QRadioButton*>(&widget)) return true;
    return (widget.focusPolicy() & Qt::TabFocus) != 0 && !widget.focusProxy();
}

/// The control itself, or those of its parts that the Tab key stops at.
void collectTabStops(QWidget* control, std::vector<QWidget*>& stops) {
    if (takesTab(*control)) {
        stops.push_back(control);
        return;
    }
    for (QObject* child : control->children())
        if (child->isWidgetType() && !static_cast<QWidget*>(child)->isWindow())
            collectTabStops(static_cast<QWidget*>(child), stops);
}

QHBoxLayout* rowLayout(QWidget* row) {
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(Style::medium, Style::small - 1, Style::medium, Style::small - 1);
    line->setSpacing(Style::medium);
    row->setMinimumHeight(rowHeight);
    return line;
}

}  // namespace

GroupedForm::GroupedForm(QWidget* parent) : QScrollArea(parent) {
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    auto* page = new QWidget;
    sections_ = new QVBoxLayout(page);
    sections_->setContentsMargins(Style::large, Style::large, Style::large, Style::large);
    sections_->setSpacing(Style::large);
    sections_->addStretch(1);
    setWidget(page);
    // The ground is the window's, not that of text.
    viewport()->setAutoFillBackground(false);
    page->setAutoFillBackground(false);
}

GroupedForm::Section GroupedForm::addSection(const QString& title) {
    auto* column = new QVBoxLayout;
    column->setSpacing(Style::small);
    Section section;
    if (!title.isEmpty()) {
        auto* heading = section.heading_ = new QLabel(widget());
        heading->setTextFormat(Qt::PlainText);
        heading->setText(title);
        heading->setWordWrap(true);
        heading->setFont(Style::font(Style::TextSize::body, QFont::DemiBold));
        heading->setContentsMargins(Style::hair, 0, Style::hair, 0);
        column->addWidget(heading);
    }

    section.form_ = this;
    section.panel_ = new RowPanel(widget());
    section.panel_->setAccessibleName(title);
    column->addWidget(section.panel_);

    section.footer_ = new QLabel(widget());
    section.footer_->setWordWrap(true);
    section.footer_->setFont(Style::font(Style::TextSize::callout));
    section.footer_->setContentsMargins(Style::hair, 0, Style::hair, 0);
    Style::makeSecondary(section.footer_);
    section.footer_->hide();
    column->addWidget(section.footer_);
    sections_->insertLayout(sections_->count() - 1, column);
    return section;
}

void GroupedForm::Section::addRow(const QString& label, QWidget* control) {
    auto* row = new QWidget(panel_);
    QHBoxLayout* line = rowLayout(row);
    auto* name = new QLabel(row);
    name->setTextFormat(Qt::PlainText);
    name->setWordWrap(true);
    name->setMinimumWidth(std::min(leastLabelWidth, name->fontMetrics().horizontalAdvance(label) + 1));
    // A label with a buddy takes "&" for a key.
    name->setText(QString(label).replace(u'&', QLatin1String("&&")));
    std::vector<QWidget*> stops;
    collectTabStops(control, stops);
    name->setBuddy(stops.empty() ? control : stops.front());
    if (control->accessibleName().isEmpty()) control->setAccessibleName(label);

    const bool grows = control->sizePolicy().expandingDirections().testFlag(Qt::Horizontal);
    line->addWidget(name, grows ? 0 : 1);
    line->addWidget(control, grows ? 1 : 0);
    add(row, control);
}

void GroupedForm::Section::addRow(QWidget* control) {
    auto* row = new QWidget(panel_);
    rowLayout(row)->addWidget(control);
    add(row, control);
}

void GroupedForm::Section::add(QWidget* row, QWidget* control) {
    static_cast<RowPanel*>(panel_)->add(row);
    letWheelPass(control);
    form_->orderTabs();
}

void GroupedForm::Section::setRowVisible(QWidget* control, bool visible) {
    for (QWidget* row : static_cast<RowPanel*>(panel_)->rows())
        if (row->layout()->indexOf(control) >= 0) row->setVisible(visible);
    panel_->update();
}

void GroupedForm::Section::setTitle(const QString& title) {
    if (!heading_ || heading_->text() == title) return;
    heading_->setText(title);
    panel_->setAccessibleName(title);
}

void GroupedForm::Section::setFooter(const QString& text) {
    CodeSpans::show(text, *footer_);
    footer_->setVisible(!text.isEmpty());
}

void GroupedForm::orderTabs() {
    std::vector<QWidget*> stops;
    for (int index = 0; index < sections_->count(); ++index) {
        const QLayout* column = sections_->itemAt(index)->layout();
        if (!column) continue;
        for (int part = 0; part < column->count(); ++part)
            if (auto* panel = dynamic_cast<RowPanel*>(column->itemAt(part)->widget()))
                for (QWidget* row : panel->rows()) collectTabStops(row, stops);
    }
    for (std::size_t index = 1; index < stops.size(); ++index) setTabOrder(stops[index - 1], stops[index]);
}

QSize GroupedForm::sizeHint() const {
    const QSize page = widget()->sizeHint();
    return {page.width() + verticalScrollBar()->sizeHint().width(), page.height()};
}

QSize GroupedForm::minimumSizeHint() const {
    const int width = widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width();
    return {width, QScrollArea::minimumSizeHint().height()};
}

bool GroupedForm::eventFilter(QObject* object, QEvent* event) {
    const bool taken = QScrollArea::eventFilter(object, event);
    if (object == widget() && event->type() == QEvent::LayoutRequest) updateGeometry();
    return taken;
}

}  // namespace quorvel
