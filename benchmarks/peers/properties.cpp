// properties.cpp: the peers' properties.
#include "../PropertyOperations.h"

#include <glib-object.h>
#include <sigc++/sigc++.h>

#include <QHash>
#include <QMetaProperty>
#include <QObject>
#include <QProperty>

#include <boost/signals2.hpp>
#include <deque>
#include <memory>

using namespace bench;

class Model : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int name MEMBER m_other)
    Q_PROPERTY(int caption MEMBER m_other)
    Q_PROPERTY(int left MEMBER m_other)
    Q_PROPERTY(int top MEMBER m_other)
    Q_PROPERTY(int width MEMBER m_other)
    Q_PROPERTY(int height MEMBER m_other)
    Q_PROPERTY(int color MEMBER m_other)
    Q_PROPERTY(int font MEMBER m_other)
    Q_PROPERTY(int visible MEMBER m_other)
    Q_PROPERTY(int enabled MEMBER m_other)
    Q_PROPERTY(int cursor MEMBER m_other)
    Q_PROPERTY(int hint MEMBER m_other)
    Q_PROPERTY(int tag MEMBER m_other)
    Q_PROPERTY(int align MEMBER m_other)
    Q_PROPERTY(int anchor MEMBER m_other)
    Q_PROPERTY(int border MEMBER m_other)
    Q_PROPERTY(int owner MEMBER m_other)
    Q_PROPERTY(int style MEMBER m_other)
    Q_PROPERTY(int state MEMBER m_other)
    Q_PROPERTY(int value READ value WRITE setValue NOTIFY valueChanged)
public:
    int value() const { return m_value; }
    void setValue(int v)
    {
        if (v != m_value) {
            m_value = v;
            Q_EMIT valueChanged(v);
        }
    }
Q_SIGNALS:
    void valueChanged(int);

private:
    int m_value = 0, m_other = 0;
};

class Listener : public QObject
{
    Q_OBJECT
public:
    long sum = 0;
public Q_SLOTS:
    void on(int v) { sum += v; }
};

// The same model as a GObject.
struct GModel
{
    GObject parent;
    int value;
};
struct GModelClass
{
    GObjectClass parent;
};
G_DEFINE_TYPE(GModel, g_model, G_TYPE_OBJECT)
static void g_model_init(GModel*) {}
static void g_model_class_init(GModelClass* c)
{
    auto* o = G_OBJECT_CLASS(c);
    o->set_property = [](GObject* self, guint, const GValue* v, GParamSpec* spec) {
        auto* m = reinterpret_cast<GModel*>(self);
        if (int now = g_value_get_int(v); now != m->value) {
            m->value = now;
            g_object_notify_by_pspec(self, spec);
        }
    };
    o->get_property = [](GObject* self, guint, GValue* v, GParamSpec*) { g_value_set_int(v, reinterpret_cast<GModel*>(self)->value); };
    for (int i = 0; i < 20; ++i)
        g_object_class_install_property(
            o, i + 1,
            g_param_spec_int(names[i], nullptr, nullptr, G_MININT, G_MAXINT, 0,
                             GParamFlags(G_PARAM_READWRITE | G_PARAM_EXPLICIT_NOTIFY | G_PARAM_STATIC_STRINGS)));
}

namespace {

void QtSetter(State& st)
{
    Model m;
    std::deque<Listener> ls(st.range(0));
    for (auto& l : ls)
        QObject::connect(&m, &Model::valueChanged, &l, &Listener::on, Qt::DirectConnection);
    int v = 0;
    for (auto _ : st)
        m.setValue(++v);
    long sum = 0;
    for (auto& l : ls)
        sum += l.sum;
    finish(st, sum, v);
}

void QtByName(State& st)
{
    Model m;
    std::deque<Listener> ls(st.range(0));
    for (auto& l : ls)
        QObject::connect(&m, &Model::valueChanged, &l, &Listener::on, Qt::DirectConnection);
    int v = 0;
    for (auto _ : st)
        m.setProperty("value", ++v);
    long sum = 0;
    for (auto& l : ls)
        sum += l.sum;
    finish(st, sum, v);
}

void QtProperty(State& st)
{
    QProperty<int> p{0};
    long sum = 0;
    auto hear = [&] { sum += p.value(); };
    std::deque<decltype(p.onValueChanged(hear))> handlers;
    for (int i = 0; i < st.range(0); ++i)
        handlers.emplace_back(p.onValueChanged(hear));
    int v = 0;
    for (auto _ : st) {
        p.setValue(++v);
        DoNotOptimize(sum);
    }
    finish(st, sum, v);
}

void GObjectByName(State& st)
{
    auto* m = static_cast<GModel*>(g_object_new(g_model_get_type(), nullptr));
    long sum = 0;
    auto hear = +[](GObject* o, GParamSpec*, gpointer s) { *static_cast<long*>(s) += reinterpret_cast<GModel*>(o)->value; };
    for (int i = 0; i < st.range(0); ++i)
        g_signal_connect(m, "notify::value", G_CALLBACK(hear), &sum);
    int v = 0;
    for (auto _ : st)
        g_object_set(m, "value", ++v, nullptr);
    finish(st, sum, v);
    g_object_unref(m);
}

BENCHMARK(QtSetter)->Name("Property/SetNotify/QObject") LISTENERS;
BENCHMARK(QtByName)->Name("Property/SetNotify/QObject_setProperty") LISTENERS;
BENCHMARK(QtProperty)->Name("Property/SetNotify/QProperty") LISTENERS;
BENCHMARK(GObjectByName)->Name("Property/SetNotify/GObject") LISTENERS;
BENCHMARK(FunctionList<sigc::signal<void(int)>>)->Name("Property/SetNotify/sigc") LISTENERS;
BENCHMARK(FunctionList<boost::signals2::signal<void(int)>>)->Name("Property/SetNotify/signals2") LISTENERS;

void FindQt(State& st)
{
    const QMetaObject* m = &Model::staticMetaObject;
    require(m->indexOfProperty("value") == m->propertyOffset() + 19, "FindQt");
    findByName(st, [=](unsigned i) { return m->indexOfProperty(names[i]); });
}

void FindGObject(State& st)
{
    auto* c = static_cast<GObjectClass*>(g_type_class_ref(g_model_get_type()));
    require(g_object_class_find_property(c, "value"), "FindGObject");
    findByName(st, [=](unsigned i) { return g_object_class_find_property(c, names[i]); });
    g_type_class_unref(c);
}

BENCHMARK(FindQt)->Name("Property/FindByName20/QMetaObject");
BENCHMARK(FindGObject)->Name("Property/FindByName20/GObject");
BENCHMARK_TEMPLATE(FindMap, QHash<QString, int>, QString)->Name("Property/FindByName20/QHash");

}  // namespace

#include "properties.moc"
