// A valid Qt plug-in of some other interface.
#include <QObject>
#include <QtPlugin>

class OtherInterface
{
public:
    virtual ~OtherInterface() = default;
    virtual int answer() const = 0;
};

Q_DECLARE_INTERFACE(OtherInterface, "Tessaly.Test.OtherInterface")

class OtherPlugin : public QObject, public OtherInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "Tessaly.Test.OtherInterface")
    Q_INTERFACES(OtherInterface)
public:
    int answer() const override { return 42; }
};

#include "otherinterface.moc"
