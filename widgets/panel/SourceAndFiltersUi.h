#pragma once

#include "Constants.h"
#include "MsgLoggingProducer.h"
#include "QuickCellFilter.h"
#include "SourceAndFilter.h"
#include "StructuredFilterUi.h"
#include "UserSettings.h"
#include "WFilter.h"
#include "widgets_export.h"

#include <QDateTime>
#include <QList>
#include <QStringList>
#include <QWidget>

class AlarmScreenConfiguration;
class QuickFilterEditor;
class SourceUi;

// The panel above the alarm table: up to three parts (source selector,
// structured filter editor, quick filter), each optional. It forwards the
// owner's calls to the parts it holds, merges their content into one
// SourceAndFilter record and turns their signals into its own, so that the
// owner deals with one widget whatever the panel is made of.
class WIDGETS_EXPORT SourceAndFiltersUi : public QWidget, public MsgLoggingProducer
{
    Q_OBJECT
public:
    SourceAndFiltersUi(const AlarmScreenConfiguration &config, QWidget *parent);
    ~SourceAndFiltersUi() override;

    // The widgets that form keyboard-focus groups.
    virtual QList<QWidget *> getTabGroups() const = 0;
    virtual bool isOldMetadaVisible() const;
    virtual void adjustForMode(Constants::SourceMode mode);
    // An error text when archive mode cannot be set, else an empty string.
    virtual QString prepareArchiveMode(const QDateTime &start, const QDateTime &end,
                                       const QStringList &systems);
    virtual void prepareOnlineMode();
    virtual void displaySourceState(Constants::SourceState state);
    virtual void displaySourceCounts(unsigned int first, unsigned int second);
    virtual Qt::TimeSpec getTimeSpec() const;
    virtual void setTimeSpec(Qt::TimeSpec timeSpec);
    virtual void connectedSystemsChanged(const QStringList &systems);
    virtual void setFixedDpNames(const QStringList &dpNames);
    virtual bool isUseDefaultFilter() const;
    virtual void setUseDefaultFilter(bool use);
    virtual SourceAndFilter getFilter() const;
    virtual SourceAndFilter getDefaultFilter() const;
    virtual void setDefaultFilter(const SourceAndFilter &filter,
                                  UserSettings::DefaultFilterAction action);
    virtual WFilter::FilterDisplayResult displayFilter(const SourceAndFilter &filter,
                                                       StructuredFilterUi::FilterType type,
                                                       QString &error);
    virtual void compareWithFilter(const SourceAndFilter &filter, bool flag);
    virtual void setAppliedQuickFilter(const QuickCellFilter &filter);
    virtual void clearQuickFilter();
    virtual void setQuickFilterEditor(QuickFilterEditor *editor);

    // Installing a part releases the previous one (not so for the quick filter).
    void setSourceUi(SourceUi *sourceUi);
    void setStructuredFilterUI(StructuredFilterUi *structuredFilterUi);

    SourceUi *getSourceUi() const { return m_sourceUi; }
    StructuredFilterUi *getStructuredFilterUi() const { return m_structuredFilterUi; }
    QuickFilterEditor *getQuickFilterEditor() const { return m_quickFilterEditor; }
    const QStringList &getFixedDpNames() const { return m_fixedDpNames; }

signals:
    void structuredFilterChanged();
    void applyStructuredFilter(const SourceAndFilter &filters, int type);
    void abortQuery();
    void filterActionRequested(const QString &action);
    void quickFilterChanged(const QuickCellFilter &filter);
    void oldDataVisibilityChanged(bool visible);

public slots:
    void applyFilterRequest();
    void requestToApplyStructuredFilter(const SourceAndFilter &filters, int type);

private:
    SourceUi *m_sourceUi = nullptr;
    StructuredFilterUi *m_structuredFilterUi = nullptr;
    QuickFilterEditor *m_quickFilterEditor = nullptr;
    QStringList m_fixedDpNames;
    Qt::TimeSpec m_timeSpec = Qt::LocalTime;
    bool m_matchCase = false;
};
