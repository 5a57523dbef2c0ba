#pragma once

#include "MsgLoggingProducer.h"
#include "Variable.h"
#include "widgets_export.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QMetaType>
#include <QSharedPointer>
#include <QString>
#include <QVector>

class MappingVar;
class TextVar;

// A context menu that a CTRL mouse-event function asked for: its screen
// position and a tree of entries (labels, separators, push and check entries,
// cascades), read from the function's answer, a mapping with "menuX", "menuY"
// and the menu as JSON text in "menu". Every node knows its parent, so that a
// message can say where in the menu a fault lies.
//
// Faulty entries are dropped at the top level, while inside a cascade one
// faulty entry spoils the whole cascade. Only a valid root is worth showing.
class WIDGETS_EXPORT MenuDescription : public MsgLoggingProducer
{
public:
    enum ItemType : int { Root = 0, Label = 1, Separator = 2, Push = 3, Check = 4, Cascade = 5 };

    // The root, from the return value of `function` (only named in messages).
    MenuDescription(const MsgLoggingProducer *logger, const QString &function, const Variable *result);
    // One entry below `parent`.
    MenuDescription(const MenuDescription *parent, const QJsonValue &item);
    ~MenuDescription() override;
    MenuDescription(const MenuDescription &) = delete;
    MenuDescription &operator=(const MenuDescription &) = delete;

    const MenuDescription *getParent() const { return m_parent; }
    const QVector<QSharedPointer<MenuDescription>> &getItems() const { return m_items; }
    const QString &getLabel() const { return m_label; }
    ItemType getType() const { return m_type; }
    int getValue() const { return m_value; }
    int getMenuX() const { return m_menuX; }
    int getMenuY() const { return m_menuY; }
    bool isEnabled() const { return m_enabled; }
    bool isChecked() const { return m_checked; }
    bool isValid() const { return m_valid; }

    QString toString() const;
    // The short forms of all ancestors, outermost first, each followed by " - ".
    QString parentHierarchy() const;

private:
    bool parseMenuPos(const MappingVar &map, const QString &function);
    bool parseMenu(const MappingVar &map, const QString &function);
    bool parseType(const QJsonObject &item);
    bool parseCommon(const QJsonObject &item);
    bool parseForType(const QJsonObject &item);
    bool parseValue(const QJsonObject &item);
    bool parseForCheckButton(const QJsonObject &item);
    bool parseForCascade(const QJsonObject &item);
    bool getStringValue(const QJsonObject &item, const QString &key, QString &result) const;
    template <class ResultClass>
    const ResultClass *getMapValue(const MappingVar &map, const TextVar &key, VariableType expected,
                                   bool required, const QString &function) const;

    const MenuDescription *m_parent = nullptr;
    QVector<QSharedPointer<MenuDescription>> m_items;
    QString m_label;
    ItemType m_type = Root;
    int m_value = 0;
    int m_menuX = 0;
    int m_menuY = 0;
    bool m_enabled = true;
    bool m_checked = false;
    bool m_valid = false;
};

Q_DECLARE_METATYPE(QSharedPointer<MenuDescription>)
