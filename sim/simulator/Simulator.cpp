#include "sim/simulator/Simulator.h"

#include <cstdio>
#include <fstream>

#include "os/PathText.h"
#include "sim/json/Json.h"

namespace orvo::sim {

Simulator& Simulator::instance()
{
    static auto* const only = new Simulator;
    return *only;
}

void Simulator::beginSession()
{
    readBoardsFile();
    m_script.clear(Script::Origin::BoardsFile);
    for (const BoardsFile::ScriptedCall& scripted : m_boards.script)
        m_script.add(scripted.call, scripted.nth, scripted.order, Script::Origin::BoardsFile);
    m_ledger.clear();
    m_cameras.unplugAll();
    for (size_t index = 0; index < m_boards.cameras.size(); ++index)
        for (const CameraDescription& camera : m_boards.cameras[index])
            m_cameras.plugIn(static_cast<uint32_t>(index), camera);
    ++m_session;
}

void Simulator::readBoardsFile()
{
    m_boards = BoardsFile::builtIn();
    m_boardsFileError.clear();
    const std::string path = os::textOf(os::pathVariable("ORVO_SIM_BOARDS"));
    if (path.empty())
        return;
    try {
        m_boards = BoardsFile::read(path);
    } catch (const JsonError& error) {
        m_boardsFileError = error.what();
        say(m_boardsFileError);
    }
}

void Simulator::endSession()
{
    if (!m_boards.ledgerPath.empty())
        write(m_boards.ledgerPath, m_ledger.json());
    if (!m_boards.journalPath.empty())
        write(m_boards.journalPath, m_journal.text(FunctionFilter(""), 0));
}

void Simulator::write(const std::filesystem::path& path, const std::string& text)
{
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file)
        say(os::textOf(path) + ": cannot be written");
}

bool Simulator::findBoard(uint32_t index, BoardDescription& board) const
{
    if (index >= m_boards.boards.size())
        return false;
    const std::optional<BoardDescription>& described = m_boards.boards[index];
    if (described)
        board = *described;
    return described.has_value();
}

std::string_view Simulator::boardsFileError() const
{
    return m_boardsFileError;
}

DmaAccount& Simulator::account(uint32_t boardIndex, uint32_t dma)
{
    return m_ledger.account(boardIndex, dma);
}

void Simulator::setBoardHandle(uint32_t index, uint64_t handle)
{
    m_boardHandles.at(index) = handle;
}

bool Simulator::findOpenBoard(uint64_t handle, uint32_t& index) const
{
    for (size_t i = 0; handle != 0 && i < m_boardHandles.size(); ++i)
        if (m_boardHandles.at(i) == handle) {
            index = static_cast<uint32_t>(i);
            return true;
        }
    return false;
}

Camera* Simulator::camera(uint32_t boardIndex, uint32_t port)
{
    return m_cameras.find(boardIndex, port);
}

void Simulator::sendToPort(uint32_t boardIndex, uint32_t port, const ActionCommand& command)
{
    if (SimulatedCamera* const camera = m_cameras.find(boardIndex, port))
        trigger({camera}, command);
}

void Simulator::sendToAll(uint32_t boardIndex, const ActionCommand& command)
{
    trigger(m_cameras.camerasOf(boardIndex), command);
}

void Simulator::trigger(const std::vector<SimulatedCamera*>& cameras, const ActionCommand& command)
{
    const auto now = ExposureSchedule::Clock::now();   // one moment for all of them
    for (SimulatedCamera* const camera : cameras)
        camera->act(command, now);
}

void Simulator::say(std::string_view message)
{
    if (m_messages && !m_boards.isQuiet)
        insist(message);
}

void Simulator::insist(std::string_view message)
{
    std::fputs(("orvo_sim: " + std::string(message) + "\n").c_str(), stderr);
}

bool Simulator::isWatching() const
{
    return m_journal.isRecording() || !m_script.isEmpty();
}

CallPass Simulator::enter(std::string_view function, std::string_view arguments)
{
    const Journal::Place place = m_journal.begin(function, arguments);
    CallPass pass;
    pass.journalLine = place.line;
    pass.journalEpoch = place.epoch;
    m_script.enter(function, arguments, pass);
    return pass;
}

void Simulator::leave(const CallPass& pass, std::string_view rest)
{
    m_script.leave(pass);
    m_journal.end({pass.journalLine, pass.journalEpoch}, rest);
}

void CameraRack::unplugAll()
{
    const os::MutexLock lock(m_mutex);
    for (const auto& [place, camera] : m_cameras)
        camera->unplug();
}

void CameraRack::plugIn(uint32_t boardIndex, const CameraDescription& description)
{
    const os::MutexLock lock(m_mutex);
    SimulatedCamera*& camera = m_cameras[{boardIndex, description.port}];
    if (!camera)
        camera = new SimulatedCamera;
    camera->plugIn(description);
}

SimulatedCamera* CameraRack::find(uint32_t boardIndex, uint32_t port) const
{
    const os::MutexLock lock(m_mutex);
    const auto found = m_cameras.find({boardIndex, port});
    return found != m_cameras.end() && found->second->isDescribed() ? found->second : nullptr;
}

std::vector<SimulatedCamera*> CameraRack::camerasOf(uint32_t boardIndex) const
{
    const os::MutexLock lock(m_mutex);
    std::vector<SimulatedCamera*> cameras;
    for (auto entry = m_cameras.lower_bound({boardIndex, 0}); entry != m_cameras.end(); ++entry)
        if (entry->first.first == boardIndex && entry->second->isDescribed())
            cameras.push_back(entry->second);
    return cameras;
}

void CameraRack::bringAllBack()
{
    const os::MutexLock lock(m_mutex);
    for (const auto& [place, camera] : m_cameras)
        camera->comeBack();
}

}   // namespace orvo::sim

orvo::sim::Core* orvo_sim_core()
{
    return &orvo::sim::Simulator::instance();
}
