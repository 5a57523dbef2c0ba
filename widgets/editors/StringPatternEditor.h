#pragma once

#include "WFilter.h"

class SingleLineTextEdit;

// The one-line pattern editor of a structured filter tab: a pattern list with
// completion of its parts, producing a pattern filter. It never grows.
class WIDGETS_EXPORT StringPatternEditor : public WFilter
{
    Q_OBJECT
public:
    StringPatternEditor(const WildcardConfig &config, const QString &columnId,
                        Constants::ValueSource source, QWidget *parent = nullptr);
    ~StringPatternEditor() override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    QSharedPointer<ValueFilter> getFilter(bool matchCase) override;
    bool setFilter(const QSharedPointer<ValueFilter> &filter, bool matchCase, QString &errorText) override;
    void setMatchCase(bool matchCase) override;
    void setCompletionStrings(const QStringList &strings) override;

    SingleLineTextEdit *getTextEdit() const { return m_edit; }

private slots:
    void filterDocChanged();

private:
    SingleLineTextEdit *m_edit;
};
