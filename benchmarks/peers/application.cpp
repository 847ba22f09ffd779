// application.cpp: the peers' broadcasts, list models, and lists of unique texts.
#include "../ApplicationOperations.h"

#include <wx/event.h>

#include <QCoreApplication>
#include <QEvent>
#include <QStandardItemModel>
#include <QStringList>

#include <memory>

using namespace bench;

namespace {

struct Frame : QObject
{
    static inline long count = 0;
    bool event(QEvent* e) override
    {
        if (e->type() != QEvent::LanguageChange)
            return QObject::event(e);
        ++count;
        return true;
    }
};

void broadcastQt(State& st)
{
    std::vector<std::unique_ptr<Frame>> frames;
    for (int i = 0; i < frameCount; ++i)
        frames.push_back(std::make_unique<Frame>());
    for (auto _ : st) {
        Frame::count = 0;
        QEvent event(QEvent::LanguageChange);
        for (auto& frame : frames)
            QCoreApplication::sendEvent(frame.get(), &event);
        require(Frame::count == frameCount, "sendEvent");
    }
}

wxDEFINE_EVENT(EVT_LANGUAGE, wxThreadEvent);

void broadcastWx(State& st)
{
    long count = 0;
    std::vector<std::unique_ptr<wxEvtHandler>> frames;
    for (int i = 0; i < frameCount; ++i) {
        frames.push_back(std::make_unique<wxEvtHandler>());
        frames.back()->Bind(EVT_LANGUAGE, [&](wxThreadEvent&) { ++count; });
    }
    for (auto _ : st) {
        count = 0;
        wxThreadEvent event(EVT_LANGUAGE);
        for (auto& frame : frames)
            frame->ProcessEvent(event);
        require(count == frameCount, "ProcessEvent");
    }
}

void fill(QStandardItemModel& model, const std::vector<std::string>& texts)
{
    for (const std::string& text : texts)
        model.appendRow(new QStandardItem(QString::fromStdString(text)));
}

void listInsertQt(State& st)
{
    const auto texts = itemTexts(listItems);
    QStandardItemModel model;
    for (auto _ : st) {
        fill(model, texts);
        require(model.rowCount() == listItems, "appendRow");
        model.clear();
    }
}

void comboLoadQt(State& st)
{
    const auto texts = itemTexts(comboItems);
    QStandardItemModel model;
    for (auto _ : st) {
        model.clear();
        fill(model, texts);
    }
    require(model.rowCount() == comboItems, "appendRow");
}

void comboSaveQt(State& st)
{
    QStandardItemModel model;
    fill(model, itemTexts(comboItems));
    for (auto _ : st) {
        QStringList items;
        for (int i = 0; i < model.rowCount(); ++i) {
            const QString text = model.item(i)->text();
            if (!items.contains(text))
                items.append(text);
        }
        require(items.size() == comboItems, "contains");
    }
}

BENCHMARK(broadcastQt)->Name("App/Broadcast100/Qt");
BENCHMARK(broadcastWx)->Name("App/Broadcast100/wx");
BENCHMARK(listInsertQt)->Name("App/ListInsert10000/QStandardItemModel");
BENCHMARK(comboLoadQt)->Name("App/ComboLoad1000/QStandardItemModel");
BENCHMARK(comboSaveQt)->Name("App/ComboSave1000/QStandardItemModel");

}  // namespace
