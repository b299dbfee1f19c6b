#pragma once

#include <QString>
#include <QWidget>
#include <optional>

class QLabel;
class QLineEdit;
class QLocale;

namespace quorvel {

/// A field for a number and its unit, typed in the user's locale with at most two decimals shown. What doesn't parse
/// leaves the old value. It has no arrows and no limits of its own: who uses it clamps what it sends.
class NumberField : public QWidget {
    Q_OBJECT
public:
    /// `title` becomes the accessible name; the row's label stands elsewhere.
    NumberField(const QString& title, const QString& unit, QWidget* parent = nullptr);

    /// Shows the model's value. What the user is typing stays while the value is the one that was there before.
    void setValue(double value);
    double value() const { return value_; }

    /// Drops what is typed: for owners whose value became that of another thing.
    void restore();

    /// The number of a text in this locale, with or without group separators and white space around; nothing when it
    /// isn't one or isn't finite.
    static std::optional<double> parse(const QString& text, const QLocale& locale);
    /// With 0 to 2 decimals, none that is needless; empty for what isn't finite.
    static QString print(double value, const QLocale& locale);

Q_SIGNALS:
    /// The user has typed another value: with Return, Tab, or by leaving the field. Unless `setValue` answers it, the
    /// field goes back to the old one: it shows what the model made of it. The field must outlive the signal.
    void valueEdited(double value);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void commit();
    bool isTyping() const;

    QLineEdit* field_ = nullptr;
    double value_ = 0;
};

}  // namespace quorvel
