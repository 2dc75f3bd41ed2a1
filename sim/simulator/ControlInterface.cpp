#include "sim/orvo_sim.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "sim/simulator/Simulator.h"

using orvo::sim::FunctionFilter;
using orvo::sim::Journal;
using orvo::sim::PictureDelivery;
using orvo::sim::Script;
using orvo::sim::SimulatedCamera;
using orvo::sim::Simulator;
using Kind = orvo::sim::Script::Order::Kind;

namespace {

std::string_view textOf(const char* text)
{
    return text ? text : "";
}

uint64_t copyOut(const std::string& text, char* buffer, uint64_t size)
{
    if (buffer && size > 0) {
        const size_t length = std::min<size_t>(text.size(), static_cast<size_t>(size - 1));
        std::memcpy(buffer, text.data(), length);
        buffer[length] = '\0';
    }
    return text.size() + 1;
}

void order(const char* call, uint32_t nth, Script::Order what)
{
    const std::string problem = Script::problemWith(textOf(call));
    if (!problem.empty())   // a mistake in the program, which switched off what it expects of files
        Simulator::insist("script: " + problem);
    Simulator::instance().script().add(textOf(call), nth, std::move(what), Script::Origin::ControlInterface);
}

}   // namespace

void OrvoSim_reset(void)
{
    Simulator& simulator = Simulator::instance();
    OrvoSim_clearScript();
    simulator.journal().clear();
    simulator.journal().setLimit(Journal::kDefaultLimit);
    simulator.ledger().clear();
    simulator.cameras().bringAllBack();
    simulator.setManual(false);
    simulator.setMessages(true);
}

void OrvoSim_setMessages(int32_t on)
{
    Simulator::instance().setMessages(on != 0);
}

void OrvoSim_setManual(int32_t manual)
{
    Simulator::instance().setManual(manual != 0);
}

int32_t OrvoSim_deliver(uint32_t boardIndex, uint32_t dma, uint32_t count)
{
    PictureDelivery* const delivery = Simulator::instance().delivery();
    return delivery ? delivery->deliver(boardIndex, dma, count) : ORVO_SIM_NOT_RUNNING;
}

int32_t OrvoSim_callBack(uint32_t boardIndex, uint32_t dma, int64_t pictureNumber)
{
    PictureDelivery* const delivery = Simulator::instance().delivery();
    return delivery ? delivery->callBack(boardIndex, dma, pictureNumber) : ORVO_SIM_NOT_RUNNING;
}

int32_t OrvoSim_waitForDelivered(uint32_t boardIndex, uint32_t dma, uint64_t count, uint32_t timeoutMs)
{
    return Simulator::instance().ledger().waitForDelivered(boardIndex, dma, count,
                                                           std::chrono::milliseconds(timeoutMs));
}

void OrvoSim_answer(const char* call, uint32_t nth, int64_t result)
{
    Script::Order what;
    what.result = result;
    order(call, nth, std::move(what));
}

void OrvoSim_answerWith(const char* call, uint32_t nth, int64_t result, const void* bytes, uint64_t size)
{
    const auto* const first = static_cast<const std::byte*>(bytes);
    Script::Order what;
    what.result = result;
    what.handsOut = bytes != nullptr;
    what.bytes.assign(first, first + (bytes ? size : 0));
    order(call, nth, std::move(what));
}

void OrvoSim_slow(const char* call, uint32_t nth, uint32_t milliseconds)
{
    Script::Order what;
    what.kind = Kind::Slow;
    what.delay = std::chrono::milliseconds(milliseconds);
    order(call, nth, std::move(what));
}

void OrvoSim_hold(const char* call, uint32_t nth, int32_t where)
{
    Script::Order what;
    what.kind = where == ORVO_SIM_AT_EXIT ? Kind::HoldAtExit : Kind::HoldAtEntry;
    order(call, nth, std::move(what));
}

int32_t OrvoSim_waitUntilHeld(const char* call, uint32_t timeoutMs)
{
    return Simulator::instance().script().waitUntilHeld(textOf(call), std::chrono::milliseconds(timeoutMs));
}

void OrvoSim_letGo(const char* call)
{
    Simulator::instance().script().letGo(textOf(call));
}

void OrvoSim_clearScript(void)
{
    Simulator::instance().script().clear(Script::Origin::ControlInterface);
    Simulator::instance().script().clear(Script::Origin::BoardsFile);
}

int32_t OrvoSim_vanishCamera(uint32_t boardIndex, uint32_t port, uint64_t calls)
{
    SimulatedCamera* const camera = Simulator::instance().cameras().find(boardIndex, port);
    if (camera)
        camera->vanishAfter(calls);
    return camera != nullptr;
}

int32_t OrvoSim_restoreCamera(uint32_t boardIndex, uint32_t port)
{
    SimulatedCamera* const camera = Simulator::instance().cameras().find(boardIndex, port);
    if (camera)
        camera->comeBack();
    return camera != nullptr;
}

uint64_t OrvoSim_readJournal(const char* filter, uint64_t from, char* buffer, uint64_t size)
{
    const FunctionFilter kept(textOf(filter));
    return copyOut(Simulator::instance().journal().text(kept, from), buffer, size);
}

uint64_t OrvoSim_countJournal(void)
{
    return Simulator::instance().journal().count();
}

void OrvoSim_clearJournal(void)
{
    Simulator::instance().journal().clear();
}

void OrvoSim_limitJournal(uint64_t lines)
{
    Simulator::instance().journal().setLimit(lines);
}

int32_t OrvoSim_readLedger(uint32_t boardIndex, uint32_t dma, OrvoSim_Ledger* ledger)
{
    return ledger && Simulator::instance().ledger().read(boardIndex, dma, *ledger);
}

uint64_t OrvoSim_writeLedger(char* buffer, uint64_t size)
{
    return copyOut(Simulator::instance().ledger().json(), buffer, size);
}
