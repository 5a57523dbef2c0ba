#pragma once

#include "AlarmProp.h"
#include "Constants.h"
#include "MsgLoggingProducer.h"
#include "WildcardConfig.h"

#include <QHash>
#include <QStringList>

#include <functional>

class AlarmScreenConfiguration;
class QWidget;
class WFilter;

// Builds the page of rule editors of one structured-filter tab: one editor per
// filterable alarm property among the configuration's columns, labelled with
// the column title. Which editor a property gets follows from its type, by a
// table of editor kinds: supporting another type is one entry.
class StructuredFilterPageBuilder : public MsgLoggingProducer
{
public:
    using EditorFactory = std::function<WFilter *(const WildcardConfig &config, const QString &columnId,
                                                  Constants::ValueSource source, const QString &title)>;
    struct EditorKind
    {
        EditorFactory create;
        // Whether the editor shows completion values (its property is then
        // reported to the caller, who asks the completion service for them).
        bool takesCompletions = false;
    };
    using EditorKinds = QHash<int, EditorKind>; // by AlarmProp::Type
    // Properties whose values call for another editor than their type's.
    using PropertyEditorKinds = QHash<QString, EditorKind>; // by AlarmProp name

    explicit StructuredFilterPageBuilder(const MsgLoggingProducer *logger);

    // The editors of the standard panel.
    static EditorKinds standardEditorKinds();
    void setEditorKinds(const EditorKinds &kinds) { m_kinds = kinds; }
    const EditorKinds &getEditorKinds() const { return m_kinds; }
    static PropertyEditorKinds standardPropertyEditorKinds();
    void setPropertyEditorKinds(const PropertyEditorKinds &kinds) { m_propertyKinds = kinds; }
    const PropertyEditorKinds &getPropertyEditorKinds() const { return m_propertyKinds; }

    // A new page without parent; `completionNames` receives the properties
    // whose editors take completions, in column order.
    QWidget *build(const AlarmScreenConfiguration &config, QStringList &completionNames) const;

private:
    EditorKinds m_kinds;
    PropertyEditorKinds m_propertyKinds;
};
