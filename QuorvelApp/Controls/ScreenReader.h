#pragma once

class QWidget;

/// What is read out by itself to those who don't see it appear.
namespace quorvel::ScreenReader {

/// Gives the widget the role of an alert. To be called first of all: its role is settled when its name is set.
void makeAlert(QWidget* widget);

/// Tells that what an alert says is news: when it has appeared, and when it says something else. Nothing is said of one
/// that isn't seen.
void speak(QWidget* alert);

}  // namespace quorvel::ScreenReader
