// A minimal host: calls a native CTRL function with arguments converted from
// Qt values and prints the answer converted back.
#include <Controller.h>
#include <DoneCB.h>
#include <DynVar.h>
#include <MsgLoggingProducer.h>
#include <converter.h>

#include <QCoreApplication>
#include <QTextStream>

#include <memory>

namespace {
class PrintAnswer : public DoneCB
{
public:
    void execute(const Variable *result) override
    {
        const QVariant answer = converter::ctrlToNative(result);
        QTextStream(stdout) << "answer: " << answer.toStringList().join(QLatin1Char(',')) << '\n';
        QCoreApplication::exit(answer.toStringList() == QStringList{"b", "a"} ? 0 : 1);
    }
    DoneCB *clone() const override { return new PrintAnswer(*this); }
};
} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    Controller::thisPtr->registerNativeLibrary(
        QStringLiteral("host"),
        {{QStringLiteral("reverse"), [](const DynVar &args) -> Variable * {
              auto *reversed = new DynVar;
              for (int i = args.count() - 1; i >= 0; --i)
                  reversed->append(*args.at(i));
              return reversed;
          }}});
    const int script = Controller::thisPtr->checkIn("#uses \"host\"", DynVar(), nullptr, nullptr, 0, 0, 0);
    MsgLoggingProducer logger;
    const std::unique_ptr<Variable> args(
        converter::nativeToCtrlArguments(&logger, {QStringLiteral("a"), QStringLiteral("b")}));
    auto *callback = new PrintAnswer;
    if (script < 0 || !args || Controller::thisPtr->startFunc(script, "reverse", *args, callback) == 1) {
        delete callback;
        return 2;
    }
    return app.exec();
}
