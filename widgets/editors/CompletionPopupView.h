#pragma once

#include "widgets_export.h"

#include <QListView>

// The list a pattern editor's completer shows. Completion lists can hold a
// hundred thousand values: rows are laid out as one uniform height, and the
// width asked for is that of the first rows only, so that opening and narrowing
// the list costs the same whatever its length.
class WIDGETS_EXPORT CompletionPopupView : public QListView
{
    Q_OBJECT
public:
    explicit CompletionPopupView(QWidget *parent = nullptr);

    // The widest of the first `measuredRows()` rows.
    int sizeHintForColumn(int column) const override;
    static int measuredRows() { return 500; }
};
