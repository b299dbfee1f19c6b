#pragma once

#include "CardsTab/BannerList.h"

#include <QWidget>
#include <vector>

class QVBoxLayout;

namespace quorvel {

/// The banners below each other; without any it has no height.
class Banners : public QWidget {
    Q_OBJECT
public:
    explicit Banners(QWidget* parent = nullptr);

    void setBanners(std::vector<Banner> banners);

Q_SIGNALS:
    void activated(Banner::Action action);

private:
    QWidget* row(const Banner& banner);

    std::vector<Banner> banners_;
    QVBoxLayout* rows_ = nullptr;
};

}  // namespace quorvel
