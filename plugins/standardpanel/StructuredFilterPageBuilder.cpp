#include "StructuredFilterPageBuilder.h"

#include "AlarmScreenConfiguration.h"
#include "StringPatternEditor.h"
#include "TextRuleTableEditor.h"
#include "ValueFilterFixed.h"
#include "WEditFilterRuleDate.h"
#include "WEditFilterRuleNumbers.h"
#include "WEditFilterRuleSingleValue.h"
#include "WFixedFilterToggleButton.h"

#include <QGridLayout>
#include <QLabel>
#include <QSet>
#include <QWidget>

namespace {

// Editors per row of the page: the page sits in a tab above the alarm table,
// so it grows sideways rather than downwards.
constexpr int EditorsPerRow = 3;

WFilter *toggleEditor(const WildcardConfig &config, const QString &columnId, Constants::ValueSource source,
                      const QString &title)
{
    // Checked, the toggle keeps the alarms whose flag is set.
    auto filter = QSharedPointer<ValueFilterFixed>::create(config, columnId, source, false, columnId, true, false);
    auto *editor = new WFixedFilterToggleButton(config, filter, nullptr);
    editor->setText(title);
    return editor;
}

WFilter *numbersEditor(const WildcardConfig &config, const QString &columnId, Constants::ValueSource source,
                       const QString &)
{
    return new WEditFilterRuleNumbers(config, columnId, source, nullptr);
}

WFilter *dateEditor(const WildcardConfig &config, const QString &columnId, Constants::ValueSource source,
                    const QString &)
{
    // To the second, as the alarm table shows times.
    return new WEditFilterRuleDate(config, columnId, source, QStringLiteral("yyyy/MM/dd HH:mm:ss"), nullptr);
}

WFilter *singleValueEditor(const WildcardConfig &config, const QString &columnId, Constants::ValueSource source,
                           const QString &)
{
    return new WEditFilterRuleSingleValue(config, columnId, source, nullptr);
}

WFilter *ruleTableEditor(const WildcardConfig &config, const QString &columnId, Constants::ValueSource source,
                         const QString &)
{
    return new TextRuleTableEditor(config, columnId, source, nullptr);
}

WFilter *patternEditor(const WildcardConfig &config, const QString &columnId, Constants::ValueSource source,
                       const QString &title)
{
    auto *editor = new StringPatternEditor(config, columnId, source, nullptr);
    editor->setToolTip(QObject::tr("Patterns for %1, separated by ';' (Ctrl+E completes)").arg(title));
    return editor;
}

} // namespace

StructuredFilterPageBuilder::StructuredFilterPageBuilder(const MsgLoggingProducer *logger)
    : MsgLoggingProducer(logger), m_kinds(standardEditorKinds()),
      m_propertyKinds(standardPropertyEditorKinds())
{
}

StructuredFilterPageBuilder::EditorKinds StructuredFilterPageBuilder::standardEditorKinds()
{
    EditorKinds kinds;
    kinds.insert(AlarmProp::Text, {patternEditor, true});
    kinds.insert(AlarmProp::Boolean, {toggleEditor, false});
    kinds.insert(AlarmProp::Integer, {numbersEditor, false});
    kinds.insert(AlarmProp::Number, {numbersEditor, false});
    kinds.insert(AlarmProp::DateTime, {dateEditor, false});
    return kinds;
}

StructuredFilterPageBuilder::PropertyEditorKinds StructuredFilterPageBuilder::standardPropertyEditorKinds()
{
    PropertyEditorKinds kinds;
    // A class is one of a few names, which the completions list.
    kinds.insert(AlarmProp::byIndex(AlarmProp::AlarmClass).getName(), {singleValueEditor, true});
    // Alarm texts are sentences: rules that include some and exclude others.
    kinds.insert(AlarmProp::byIndex(AlarmProp::AlarmText).getName(), {ruleTableEditor, false});
    return kinds;
}

QWidget *StructuredFilterPageBuilder::build(const AlarmScreenConfiguration &config,
                                            QStringList &completionNames) const
{
    auto *page = new QWidget;
    page->setObjectName(QStringLiteral("structuredFilterPage"));
    auto *layout = new QGridLayout(page);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->setHorizontalSpacing(6);
    layout->setVerticalSpacing(2);

    const WildcardConfig wildcards = config.getWildcardConfig();
    QSet<QString> done;
    int placed = 0;
    for (const ColumnDefinition &column : config.getColumns()) {
        const auto source = Constants::ValueSource(column.getSource());
        const AlarmProp prop = AlarmProp::byName(column.getId());
        if (source != Constants::ValueSourceAlarm || !prop.isValid() || done.contains(prop.getName()))
            continue;
        const EditorKind *kind = nullptr;
        const auto byName = m_propertyKinds.constFind(prop.getName());
        if (byName != m_propertyKinds.constEnd()) {
            kind = &byName.value();
        } else {
            const auto byType = m_kinds.constFind(prop.getType());
            if (byType != m_kinds.constEnd())
                kind = &byType.value();
        }
        if (!kind || !kind->create)
            continue;
        WFilter *editor = kind->create(wildcards, prop.getName(), source, column.getTitle());
        if (!editor)
            continue;
        done.insert(prop.getName());
        editor->setObjectName(prop.getName() + QStringLiteral("Filter"));
        auto *label = new QLabel(column.getTitle(), page);
        label->setBuddy(editor);
        const int row = placed / EditorsPerRow;
        const int col = 2 * (placed % EditorsPerRow);
        layout->addWidget(label, row, col);
        layout->addWidget(editor, row, col + 1);
        ++placed;
        if (kind->takesCompletions)
            completionNames.append(prop.getName());
    }
    for (int i = 0; i < EditorsPerRow; ++i)
        layout->setColumnStretch(2 * i + 1, 1);
    layout->setRowStretch(placed / EditorsPerRow + 1, 1);
    return page;
}
