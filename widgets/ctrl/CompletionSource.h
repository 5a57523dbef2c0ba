#pragma once

#include "CCodeExternData.h"
#include "CtrlBridge.h"
#include "FilterCompletions.h"
#include "MsgLoggingMultiProducer.h"
#include "widgets_export.h"

#include <QList>
#include <QMap>
#include <QObject>
#include <QSharedPointer>
#include <QStringList>
#include <QVariantList>

class FilterWidgetConfiguration;

// Completion values for the filter editors, fetched from the master and slave
// CTRL functions of one library and kept per alarm property. One source
// serves every filter widget with the same completion configuration; it logs
// to all of their producers.
//
// Consumers are opaque tokens: answers that only one consumer asked for (the
// slave answers after its filter changed) carry its token, master answers a
// null token that every consumer of the property takes as its own.
class WIDGETS_EXPORT CompletionSource : public QObject, public MsgLoggingMultiProducer
{
    Q_OBJECT
public:
    // The source shared by configurations like `config`, made on first use.
    static QSharedPointer<CompletionSource> getInstance(const MsgLoggingProducer *logger,
                                                        const FilterWidgetConfiguration &config);

    CompletionSource(const MsgLoggingProducer *logger, const FilterWidgetConfiguration &config);
    ~CompletionSource() override;

    bool canBeUsedForConfig(const FilterWidgetConfiguration &config) const;
    QSharedPointer<FilterCompletions> getCompletions(const QString &property) const;
    ScriptId getScriptId() const { return m_scriptId; }

    QVariantList buildMasterArgs(const QString &property, const QStringList &systems) const;
    QVariantList buildSlaveArgs(const QString &property, const QMap<QString, QString> &values) const;

public slots:
    void requestCompletions(void *consumer, const QString &property, const QStringList &systems);
    void filterChanged(void *consumer, const QString &filterName, const QMap<QString, QString> &values);
    void systemConnectionChanged(void *consumer, const QStringList &systems);
    void completionsUpdated(void *consumer, const FilterCompletions *completions);

signals:
    void completionsReady(void *consumer, const QSharedPointer<FilterCompletions> &completions);

private:
    bool loadCtrlLib();
    bool queryMasterCompletions(void *consumer, const QSharedPointer<FilterCompletions> &completions,
                                const QStringList &systems);
    bool callMasterCompletionsCtrl(void *consumer, const QSharedPointer<FilterCompletions> &completions,
                                   const QStringList &systems);
    bool querySlaveCompletions(void *consumer, const QSharedPointer<FilterCompletions> &completions,
                               const QMap<QString, QString> &values);
    // Asks for the systems of a per-system property that it lacks, or
    // collects them while a request runs.
    void requestMissingSystems(void *consumer, const QSharedPointer<FilterCompletions> &completions,
                               const QStringList &systems);
    bool startCall(const QString &function, const QVariantList &args,
                   const QSharedPointer<FilterCompletions> &completions, void *consumer);

    QString m_library;
    QString m_masterFunction;
    QString m_slaveFunction;
    QMap<QString, QSharedPointer<FilterCompletions>> m_completions;
    ScriptId m_scriptId = -1;
    CCodeExternData m_externData;

    static QList<QSharedPointer<CompletionSource>> m_instances;
};
