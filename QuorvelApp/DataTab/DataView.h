#pragma once

#include "DataTab/ColumnsSection.h"
#include "DataTab/DataTableView.h"
#include "DataTab/FilesSection.h"
#include "Model/AppModel.h"

#include <QWidget>
#include <optional>

class QStackedWidget;

namespace quorvel {

/// The deck’s files, which column feeds which field, and the table as read. Reads the model and calls its operations;
/// keeps no state of its own.
class DataView : public QWidget {
    Q_OBJECT
public:
    explicit DataView(AppModel& model, QWidget* parent = nullptr);

private:
    /// What a table was read from: the places in it mean something as long as that is the same.
    struct Origin {
        std::optional<UUID> deck;
        std::optional<std::filesystem::path> file;
        std::int64_t sheetIndex = 0;

        bool operator==(const Origin&) const = default;
    };

    /// Shows what the model has now.
    void refresh(Changes changes);
    void refreshTable();

    AppModel& model_;
    GroupedForm* form_;
    FilesSection files_;
    ColumnsSection columns_;
    QStackedWidget* right_;
    QWidget* withoutTable_;
    DataTableView* table_;
    Origin origin_;
    Announcer::Subscription subscription_;
};

}  // namespace quorvel
