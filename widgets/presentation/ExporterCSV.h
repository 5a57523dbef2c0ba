#pragma once

#include "ModelRowSelection.h"
#include "MsgLoggingProducer.h"
#include "widgets_export.h"

#include <QCoreApplication>
#include <QList>
#include <QMetaObject>
#include <QModelIndex>
#include <QScopedPointer>
#include <QStringList>
#include <QVector>

#include <functional>

class QAbstractItemModel;
class QFileDevice;
class QTextStream;
class QTreeView;
class QWidget;

// Writes the rows of the alarm table into a CSV file: all rows (collapsed
// groups included) or the selected ones, optionally with a header line and
// with the values of the leading grouping levels in front of each row. The
// only escaping is a backslash before the separator inside a field.
//
// A file is written next to its target and put in place only when the export
// has succeeded, so a failed or cancelled export leaves the previous file as
// it was. Targets that are not regular files (devices, pipes) are written
// directly.
//
// The walk holds model indexes, so a change of the table's rows while the
// progress handler lets events through ends the export with an error rather
// than reading rows that are gone.
class WIDGETS_EXPORT ExporterCSV : public MsgLoggingProducer
{
    Q_DECLARE_TR_FUNCTIONS(ExporterCSV)
public:
    // Asked every so many rows with the number of rows written; false cancels
    // the export.
    using ProgressHandler = std::function<bool(int rowsWritten)>;

    explicit ExporterCSV(const MsgLoggingProducer *logger);
    ~ExporterCSV() override;

    void setSeparatorCSV(const QString &separator);
    QChar getSeparator() const { return m_separator; }
    QString getLastError() const { return m_lastError; }
    QString getLastDirectory() const { return m_lastDirectory; }
    void setLastDirectory(const QString &directory) { m_lastDirectory = directory; }
    void setProgressHandler(const ProgressHandler &handler, int everyRows = 1000);

    // An empty file name asks the operator for one.
    bool openExportFile(const QString &fileName, QWidget *parent);
    bool exportToCsv(QTreeView *view, int groupingDepth, const QString &fileName, bool allRows, bool header,
                     bool grouping, const QStringList &columns);
    bool exportToCsv(QTextStream &stream, QTreeView *view, int groupingDepth, bool allRows, bool header,
                     bool grouping, const QStringList &columns);

protected:
    bool prepareForExport(QTreeView *view, int groupingDepth, const QStringList &columns);
    void prepareVisibleColumns(const QTreeView *view);
    bool prepareSelectedColumns(const QStringList &columns);
    bool exportHeader(QTextStream &stream, bool grouping);
    bool exportAllRows(QTextStream &stream, const ModelRowSelection *selection, bool grouping, int depth,
                       const QModelIndex &parent);
    bool exportSelectedRows(QTextStream &stream, const QList<QModelIndex> &selected, bool grouping);
    bool exportRow(QTextStream &stream, bool grouping, const QModelIndex &parent, int row);
    // One value per grouping level, or a QVariantList of them (the group
    // values from the top down); each field is followed by the separator.
    bool addGroupingColumns(QTextStream &stream, bool grouping, const QVariant &value);
    bool outEscaped(QTextStream &stream, const QVariant &value);
    bool checkOutStreamState(QTextStream &stream);

private:
    bool fail(const QString &error);
    bool rowDone();
    void closeFile(bool keep);
    void watchModel(bool watch);

    QChar m_separator;
    QString m_escapedSeparator;
    QString m_lastDirectory;
    QString m_lastError;
    QScopedPointer<QFileDevice> m_file;
    ModelRowSelection m_rowSelection;
    QTreeView *m_view = nullptr;
    const QAbstractItemModel *m_model = nullptr;
    QVector<int> m_columns;
    int m_groupingDepth = 0;
    ProgressHandler m_progress;
    int m_progressEvery = 1000;
    int m_rowsWritten = 0;
    bool m_modelChanged = false;
    QList<QMetaObject::Connection> m_modelWatch;
};
