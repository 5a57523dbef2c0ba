#pragma once

#include "widgets_export.h"

#include <QCoreApplication>
#include <QString>

class QWidget;

// What the operator chose for an export to CSV, remembered from one export
// to the next.
class WIDGETS_EXPORT ExportCsvOptions
{
    Q_DECLARE_TR_FUNCTIONS(ExportCsvOptions)
public:
    // Shows the options dialog, starting from the choices kept here and the
    // given separator. Without a selection only all rows can be exported.
    // OK keeps the new choices and returns true; Cancel changes nothing.
    bool getOptions(const QString &separator, bool hasSelection, QWidget *parent = nullptr);

    bool isAllRows() const { return m_allRows; }
    bool isHeader() const { return m_header; }
    bool isGrouping() const { return m_grouping; }
    QString getSeparator() const { return m_separator; }

private:
    bool m_allRows = true;
    bool m_header = true;
    bool m_grouping = false;
    QString m_separator = QStringLiteral(",");
};
