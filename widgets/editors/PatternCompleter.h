#pragma once

#include "widgets_export.h"

#include <QCompleter>
#include <QStringList>

// The completer of the pattern editors: a popup list of values sorted by the
// editor's case rule, looked up by prefix, without wrapping around.
class WIDGETS_EXPORT PatternCompleter : public QCompleter
{
    Q_OBJECT
public:
    explicit PatternCompleter(QObject *parent = nullptr);

    // Sorts `values` by the case rule and lists them.
    void setValues(const QStringList &values, bool matchCase);
    // Lists values that sortedValues() has already put in order.
    void setSortedValues(const QStringList &sorted, bool matchCase);

    // `values` in the order the completer's bisection expects: by code units
    // when matching case, else by their case-folded form.
    static QStringList sortedValues(const QStringList &values, bool matchCase);
};
