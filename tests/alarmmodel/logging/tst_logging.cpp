#include "MsgLoggerModel.h"
#include "MsgLoggingMultiProducer.h"
#include "MsgLoggingProducer.h"

#include <QtTest>

namespace {

// A class whose log lines carry its own method names, as components do.
class Component : public MsgLoggingProducer
{
public:
    explicit Component(const MsgLoggingProducer *from) : MsgLoggingProducer(from) {}
    void loadPlugin(int *built) const
    {
        ASLOG(this, MsgLoggerEnums::Warning, buildMessage(built));
    }
    static QString buildMessage(int *built)
    {
        ++*built;
        return QStringLiteral("loading plugin x");
    }
};

// A producer that writes from `userThreshold` up into `buffer`, and nothing to the console.
MsgLoggingProducer capturing(const QSharedPointer<MsgLoggerModel> &buffer, int userThreshold = 0)
{
    MsgLoggingProducer producer;
    producer.setLogThreshold(4);
    producer.setLogUserLogThreshold(userThreshold);
    producer.setLogBuffer(buffer);
    return producer;
}

QString lastText(const MsgLoggerModel &model)
{
    return model.data(model.index(model.rowCount() - 1, MsgLoggerModel::TextColumn)).toString();
}

} // namespace

class TestLogging : public QObject
{
    Q_OBJECT
private slots:
    void prefixForms_data()
    {
        QTest::addColumn<int>("logFunc");
        QTest::addColumn<QString>("expected");
        QTest::newRow("none") << 0 << "loading plugin x";
        QTest::newRow("short") << 1 << "loadPlugin: loading plugin x";
        QTest::newRow("full") << 2 << "void {anonymous}::Component::loadPlugin(int*) const: loading plugin x";
    }
    void prefixForms()
    {
        QFETCH(int, logFunc);
        QFETCH(QString, expected);
        auto buffer = QSharedPointer<MsgLoggerModel>::create();
        MsgLoggingProducer config = capturing(buffer);
        config.setLogFunc(logFunc);
        const Component c(&config);
        int built = 0;
        c.loadPlugin(&built);
        QCOMPARE(lastText(*buffer), expected);
        QCOMPARE(built, 1);
    }

    void messageNotLoggedIsNeverBuilt()
    {
        MsgLoggingProducer config;
        config.setLogThreshold(3);
        const Component c(&config);
        int built = 0;
        c.loadPlugin(&built);
        QCOMPARE(built, 0);
        QVERIFY(!c.isLogged(MsgLoggerEnums::Warning));
        QVERIFY(c.isLogged(MsgLoggerEnums::Error));
    }

    void copiesShareTheBuffer()
    {
        auto buffer = QSharedPointer<MsgLoggerModel>::create();
        const MsgLoggingProducer config = capturing(buffer, 2);
        MsgLoggingProducer copy = config;
        MsgLoggingProducer fromPointer(&copy);
        fromPointer.addMessage(MsgLoggerEnums::Error, QStringLiteral("boom"));
        fromPointer.addMessage(MsgLoggerEnums::Trace, QStringLiteral("quiet"));
        QCOMPARE(buffer->rowCount(), 1);
        QCOMPARE(lastText(*buffer), QStringLiteral("boom"));
    }

    void multiProducerWritesEachBufferOnce()
    {
        auto shared = QSharedPointer<MsgLoggerModel>::create();
        auto own = QSharedPointer<MsgLoggerModel>::create();
        MsgLoggingProducer a = capturing(shared, 3), b = capturing(shared, 0), c = capturing(own, 3);
        MsgLoggingMultiProducer multi(&a);
        multi.addLogProducer(&b);
        multi.addLogProducer(&c);
        QCOMPARE(multi.getUniqueLogBuffers().size(), 2);
        QVERIFY(multi.isLogged(MsgLoggerEnums::Trace)); // b wants traces
        multi.addMessage(MsgLoggerEnums::Trace, QStringLiteral("t"));
        multi.addMessage(MsgLoggerEnums::Error, QStringLiteral("e"));
        QCOMPARE(shared->rowCount(), 2);
        QCOMPARE(own->rowCount(), 1);
        QCOMPARE(lastText(*own), QStringLiteral("e"));
    }

    void modelCountsWorstSeverityAndBound()
    {
        MsgLoggerModel model(nullptr, 3);
        QSignalSpy spy(&model, &MsgLoggerModel::contentChanged);
        model.addMessage(MsgLoggerEnums::Error, QStringLiteral("src"), QStringLiteral("e1"));
        model.addMessage(MsgLoggerEnums::Trace, QStringLiteral("src"), QStringLiteral("t1"));
        QCOMPARE(spy.last().at(0).toInt(), 2);
        QCOMPARE(spy.last().at(1).value<MsgLoggerEnums::LogSeverity>(), MsgLoggerEnums::Error);
        QCOMPARE(model.data(model.index(0, 1), Qt::BackgroundRole).toInt(), 3);
        QVERIFY(!model.data(model.index(0, 2), Qt::BackgroundRole).isValid());
        model.addMessage(MsgLoggerEnums::Warning, QStringLiteral("src"), QStringLiteral("w1"));
        model.addMessage(MsgLoggerEnums::Trace, QStringLiteral("src"), QStringLiteral("t2"));
        // The error was the oldest and has been dropped.
        QCOMPARE(model.rowCount(), 3);
        QCOMPARE(spy.last().at(1).value<MsgLoggerEnums::LogSeverity>(), MsgLoggerEnums::Warning);
        model.clear();
        QCOMPARE(model.rowCount(), 0);
        QCOMPARE(spy.last().at(0).toInt(), 0);
    }

    void lastOfSeverityLooksOnlyAfterTheGivenTime()
    {
        MsgLoggerModel model;
        QString text = QStringLiteral("untouched");
        QVERIFY(!model.getLastOfSeverity(MsgLoggerEnums::Error, QDateTime(), text).isValid());
        QCOMPARE(text, QStringLiteral("untouched"));
        model.addMessage(MsgLoggerEnums::Error, QString(), QStringLiteral("first"));
        model.addMessage(MsgLoggerEnums::Error, QString(), QStringLiteral("second"));
        model.addMessage(MsgLoggerEnums::Warning, QString(), QStringLiteral("warn"));
        const QDateTime t = model.getLastOfSeverity(MsgLoggerEnums::Error, QDateTime(), text);
        QVERIFY(t.isValid());
        QCOMPARE(text, QStringLiteral("second"));
        text.clear();
        QVERIFY(!model.getLastOfSeverity(MsgLoggerEnums::Error, t, text).isValid());
        QVERIFY(text.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestLogging)
#include "tst_logging.moc"
