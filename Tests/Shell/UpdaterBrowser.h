#pragma once

#include <QObject>
#include <QUrl>
#include <vector>

namespace quorvel {

/// Takes the addresses that would have gone to the browser.
class UpdaterBrowser : public QObject {
    Q_OBJECT
public:
    std::vector<QUrl> opened;

public Q_SLOTS:
    void open(const QUrl& address) { opened.push_back(address); }
};

}  // namespace quorvel
