#pragma once

#include "ValueFilter.h"
#include "alarmmodel_export.h"

// A fixed condition that the operator switches on and off with a toggle button,
// e.g. kind "unacknowledged" standing for the value false of the property
// "acknowledged".
//
// The fixed kind names the condition; the fixed value is the value the property
// must have when the condition is checked (by default the kind text itself).
// An unchecked condition restricts nothing (the filter is empty).
class ALARMMODEL_EXPORT ValueFilterFixed : public ValueFilter
{
public:
    ValueFilterFixed(const WildcardConfig &config, const QString &valueId, Constants::ValueSource source,
                     bool matchCase, const QString &fixedKind = QString(),
                     const QVariant &fixedValue = QVariant(), bool checked = false);
    ValueFilterFixed(const ValueFilterFixed &other) = default;
    ValueFilterFixed &operator=(const ValueFilterFixed &other) = default;
    ~ValueFilterFixed() override;

    Kind getKind() const override { return FixedKind; }
    QSharedPointer<ValueFilter> clone() const override;

    QString getFixedKind() const { return m_fixedKind; }
    void setFixedKind(const QString &kind) { m_fixedKind = kind; }
    // The value stood for: the one set, else the kind text.
    QVariant getFixedValue() const;
    void setFixedValue(const QVariant &value) { m_fixedValue = value; }
    bool isChecked() const { return m_checked; }
    void setChecked(bool checked) { m_checked = checked; }

    bool isEmpty() const override { return !m_checked; }
    QString describeContent() const override;
    bool matches(const QVariant &value) const override;

protected:
    bool isContentEqual(const ValueFilter &other) const override;
    void writeContent(QJsonObject &object) const override;
    bool readContent(const QJsonObject &object, const QString &path, QString &error) override;

private:
    QString m_fixedKind;
    QVariant m_fixedValue;
    bool m_checked;
};
