#pragma once

#include "WFilter.h"
#include "widgets_export.h"

#include <QAbstractButton>
#include <QMap>
#include <QPointer>

class ValueFilterFixedMulti;

// A group of toggle buttons, placed by the caller wherever it likes, that switch
// the fixed conditions of one shared multi-valued filter.
class WIDGETS_EXPORT WFixedMultiFilterToggle : public WFilter
{
    Q_OBJECT
public:
    WFixedMultiFilterToggle(const WildcardConfig &config,
                            const QSharedPointer<ValueFilterFixedMulti> &filter, QWidget *parent);
    ~WFixedMultiFilterToggle() override;

    QSharedPointer<ValueFilter> getFilter(bool matchCase) override;
    bool setFilter(const QSharedPointer<ValueFilter> &filter, bool matchCase,
                   QString &errorText) override;
    void setMatchCase(bool matchCase) override;
    QString getColumnId() const override;
    Constants::ValueSource getSource() const override;

    // Makes `button` toggle the condition `kind`; false (and a log line) when the
    // filter has no such condition. A later button for the same kind replaces it.
    bool addButton(QAbstractButton *button, const QString &kind);
    void setFilterState(const QString &kind, bool checked, bool emitSignal);

private slots:
    void buttonClicked(bool checked);

private:
    QSharedPointer<ValueFilterFixedMulti> m_filter;
    QMap<QString, QPointer<QAbstractButton>> m_buttons;
};
