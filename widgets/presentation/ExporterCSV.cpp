#include "ExporterCSV.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QSaveFile>
#include <QSet>
#include <QTextStream>
#include <QTreeView>

ExporterCSV::ExporterCSV(const MsgLoggingProducer *logger)
    : MsgLoggingProducer(logger), m_separator(QLatin1Char(',')), m_lastDirectory(QDir::homePath())
{
    setSeparatorCSV(QStringLiteral(","));
}

ExporterCSV::~ExporterCSV() = default;

void ExporterCSV::setSeparatorCSV(const QString &separator)
{
    if (separator.size() != 1) {
        ASLOG(this, MsgLoggerEnums::Warning, QStringLiteral("CSV separator must be exactly 1 character long"));
        return;
    }
    m_separator = separator.at(0);
    m_escapedSeparator = QLatin1Char('\\') + separator;
}

void ExporterCSV::setProgressHandler(const ProgressHandler &handler, int everyRows)
{
    m_progress = handler;
    m_progressEvery = qMax(1, everyRows);
}

bool ExporterCSV::fail(const QString &error)
{
    m_lastError = error;
    ASLOG(this, MsgLoggerEnums::Warning, error);
    return false;
}

bool ExporterCSV::openExportFile(const QString &fileName, QWidget *parent)
{
    QString name = fileName;
    if (name.isEmpty()) {
        QFileDialog dialog(parent, tr("Please select output CSV file"), m_lastDirectory, tr("CSV files (*.csv)"));
        dialog.setOption(QFileDialog::DontUseNativeDialog);
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setFileMode(QFileDialog::AnyFile);
        dialog.setDefaultSuffix(QStringLiteral("csv"));
        dialog.setViewMode(QFileDialog::Detail);
        if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
            return fail(tr("no output file selected for export"));
        name = dialog.selectedFiles().first();
        m_lastDirectory = QFileInfo(name).absolutePath();
    }
    // A device or a pipe is no file that could be replaced as a whole (and
    // must not be: the replacement would take the device's place).
    const QFileInfo info(name);
    if (info.exists() && !info.isFile() && !info.isDir())
        m_file.reset(new QFile(name));
    else
        m_file.reset(new QSaveFile(name));
    if (!m_file->open(QIODevice::WriteOnly | QIODevice::Text | QIODevice::Truncate)) {
        const int error = int(m_file->error());
        m_file.reset();
        return fail(tr("failed to open file for writing: error %1 for file %2").arg(error).arg(name));
    }
    return true;
}

void ExporterCSV::closeFile(bool keep)
{
    if (!m_file)
        return;
    if (auto *save = qobject_cast<QSaveFile *>(m_file.data())) {
        if (!keep)
            save->cancelWriting();
        else if (!save->commit())
            fail(tr("writing to file failed: %1").arg(save->errorString()));
    } else {
        m_file->close();
    }
    m_file.reset();
}

bool ExporterCSV::exportToCsv(QTreeView *view, int groupingDepth, const QString &fileName, bool allRows,
                              bool header, bool grouping, const QStringList &columns)
{
    m_lastError.clear();
    if (!openExportFile(fileName, view))
        return false;
    bool ok = false;
    {
        QTextStream stream(m_file.data());
        stream.setCodec("UTF-8");
        ok = exportToCsv(stream, view, groupingDepth, allRows, header, grouping, columns);
        if (ok) {
            stream.flush();
            ok = checkOutStreamState(stream);
        }
    }
    closeFile(ok);
    return ok && m_lastError.isEmpty();
}

bool ExporterCSV::exportToCsv(QTextStream &stream, QTreeView *view, int groupingDepth, bool allRows, bool header,
                              bool grouping, const QStringList &columns)
{
    m_rowsWritten = 0;
    if (!prepareForExport(view, groupingDepth, columns))
        return false;
    if (header && !exportHeader(stream, grouping))
        return false;
    watchModel(true);
    bool ok = false;
    if (allRows) {
        m_rowSelection = ModelRowSelection(m_model);
        ok = exportAllRows(stream, &m_rowSelection, grouping, 0, QModelIndex());
        m_rowSelection = ModelRowSelection();
    } else {
        const QItemSelectionModel *selection = view->selectionModel();
        ok = exportSelectedRows(stream, selection ? selection->selectedRows() : QModelIndexList(), grouping);
    }
    watchModel(false);
    return ok;
}

void ExporterCSV::watchModel(bool watch)
{
    for (const QMetaObject::Connection &connection : qAsConst(m_modelWatch))
        QObject::disconnect(connection);
    m_modelWatch.clear();
    m_modelChanged = false;
    if (!watch)
        return;
    const auto changed = [this] { m_modelChanged = true; };
    const QAbstractItemModel *model = m_model;
    m_modelWatch << QObject::connect(model, &QAbstractItemModel::modelAboutToBeReset, changed)
                 << QObject::connect(model, &QAbstractItemModel::layoutAboutToBeChanged, changed)
                 << QObject::connect(model, &QAbstractItemModel::rowsAboutToBeInserted, changed)
                 << QObject::connect(model, &QAbstractItemModel::rowsAboutToBeRemoved, changed)
                 << QObject::connect(model, &QAbstractItemModel::rowsAboutToBeMoved, changed)
                 << QObject::connect(model, &QAbstractItemModel::columnsAboutToBeInserted, changed)
                 << QObject::connect(model, &QAbstractItemModel::columnsAboutToBeRemoved, changed)
                 << QObject::connect(model, &QAbstractItemModel::destroyed, changed);
}

bool ExporterCSV::prepareForExport(QTreeView *view, int groupingDepth, const QStringList &columns)
{
    if (!view)
        return fail(tr("NULL tree view passed to exportToCsv() method"));
    if (!view->model())
        return fail(tr("tree view without model passed to exportToCsv() method"));
    m_view = view;
    m_model = view->model();
    m_groupingDepth = groupingDepth;
    if (columns.isEmpty()) {
        prepareVisibleColumns(view);
        return true;
    }
    return prepareSelectedColumns(columns);
}

void ExporterCSV::prepareVisibleColumns(const QTreeView *view)
{
    m_columns.clear();
    const QHeaderView *header = view->header();
    for (int visual = 0; visual < header->count(); ++visual) {
        const int logical = header->logicalIndex(visual);
        if (logical >= 0 && !header->isSectionHidden(logical))
            m_columns.append(logical);
    }
}

bool ExporterCSV::prepareSelectedColumns(const QStringList &columns)
{
    m_columns.clear();
    const int count = m_model->columnCount();
    for (const QString &title : columns) {
        int found = -1;
        for (int column = 0; column < count && found < 0; ++column) {
            if (m_model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString() == title)
                found = column;
        }
        if (found < 0)
            return fail(tr("unknown column title '%1' for exporting to CSV").arg(title));
        m_columns.append(found);
    }
    return true;
}

bool ExporterCSV::exportHeader(QTextStream &stream, bool grouping)
{
    if (!addGroupingColumns(stream, grouping, QVariant()))
        return false;
    for (int i = 0; i < m_columns.size(); ++i) {
        if (i > 0)
            stream << m_separator;
        if (!outEscaped(stream, m_model->headerData(m_columns.at(i), Qt::Horizontal, Qt::DisplayRole)))
            return false;
    }
    stream << '\n';
    return checkOutStreamState(stream);
}

bool ExporterCSV::exportAllRows(QTextStream &stream, const ModelRowSelection *selection, bool grouping, int depth,
                                const QModelIndex &parent)
{
    for (int i = 0; i < selection->count(); ++i) {
        const QModelIndex index = selection->indexAt(i);
        if (!index.isValid())
            return fail(tr("failed to get valid index for row %1").arg(selection->rowAt(i)));
        // Group rows are not lines of their own: their values lead the lines below them.
        if (m_model->hasChildren(index)) {
            const ModelRowSelection children = selection->childSelection(i);
            if (!exportAllRows(stream, &children, grouping, depth + 1, index))
                return false;
        } else if (!exportRow(stream, grouping, parent, selection->rowAt(i))) {
            return false;
        }
    }
    return true;
}

bool ExporterCSV::exportSelectedRows(QTextStream &stream, const QList<QModelIndex> &selected, bool grouping)
{
    // In the order of the table, whatever the order of selecting; a selected
    // group stands for all rows below it.
    QSet<QModelIndex> wanted;
    for (const QModelIndex &index : selected)
        wanted.insert(index.sibling(index.row(), 0));
    QSet<QModelIndex> wantedGroups;
    for (const QModelIndex &index : ModelRowSelection::allRowsDepthFirst(m_model)) {
        const QModelIndex parent = index.parent();
        if (!wanted.contains(index) && !wantedGroups.contains(parent))
            continue;
        if (m_model->hasChildren(index))
            wantedGroups.insert(index);
        else if (!exportRow(stream, grouping, parent, index.row()))
            return false;
    }
    return true;
}

bool ExporterCSV::exportRow(QTextStream &stream, bool grouping, const QModelIndex &parent, int row)
{
    if (grouping && m_groupingDepth >= 1) {
        QVariantList path;
        for (QModelIndex group = parent; group.isValid(); group = group.parent())
            path.prepend(group.sibling(group.row(), 0).data(Qt::EditRole));
        if (!addGroupingColumns(stream, grouping, QVariant(path)))
            return false;
    }
    for (int i = 0; i < m_columns.size(); ++i) {
        if (i > 0)
            stream << m_separator;
        const QModelIndex index = m_model->index(row, m_columns.at(i), parent);
        if (!index.isValid())
            return fail(tr("model returned invalid index for row %1").arg(row));
        if (!outEscaped(stream, index.data(Qt::DisplayRole)))
            return false;
    }
    stream << '\n';
    if (!checkOutStreamState(stream))
        return false;
    ++m_rowsWritten;
    if (!m_progress || m_rowsWritten % m_progressEvery != 0)
        return true;
    if (!m_progress(m_rowsWritten))
        return fail(tr("export cancelled by the operator"));
    if (m_modelChanged)
        return fail(tr("the table changed during the export"));
    return true;
}

bool ExporterCSV::addGroupingColumns(QTextStream &stream, bool grouping, const QVariant &value)
{
    if (!grouping || m_groupingDepth < 1)
        return true;
    const bool perLevel = value.type() == QVariant::List;
    const QVariantList levels = perLevel ? value.toList() : QVariantList();
    for (int level = 0; level < m_groupingDepth; ++level) {
        if (!outEscaped(stream, perLevel ? levels.value(level) : value))
            return false;
        stream << m_separator;
    }
    return checkOutStreamState(stream);
}

bool ExporterCSV::outEscaped(QTextStream &stream, const QVariant &value)
{
    if (!value.isValid())
        return true;
    QString text = value.toString();
    if (text.contains(m_separator))
        text.replace(m_separator, m_escapedSeparator);
    stream << text;
    return checkOutStreamState(stream);
}

bool ExporterCSV::checkOutStreamState(QTextStream &stream)
{
    if (stream.status() == QTextStream::Ok)
        return true;
    const QIODevice *device = stream.device();
    return fail(tr("writing to file failed: %1").arg(device ? device->errorString() : QString()));
}
