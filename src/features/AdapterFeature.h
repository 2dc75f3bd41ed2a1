#pragma once

#include <cstdint>
#include <functional>
#include <source_location>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/logging/Logging.h"

namespace orvo::cognex {

class AdapterFeature;

/// The kinds of features, by the number that the host gets.
enum class FeatureType : int32_t {
    None = -1,
    Enumeration = 1,
    Integer = 2,
    Float = 3,
    Command = 4,
    Boolean = 5,
    String = 6,
};

/// Is called when a feature has been written, on the thread that wrote it.
class FeatureObserver {
public:
    virtual ~FeatureObserver() = default;

    virtual void featureChanged(AdapterFeature* feature) = 0;
};

/// An observer that calls a function.
class FeatureObserverCallback : public FeatureObserver {
public:
    using Callback = std::function<void(AdapterFeature*)>;

    void setCallback(Callback callback) { m_callback = std::move(callback); }
    /// Throws std::bad_function_call if no function was set.
    void featureChanged(AdapterFeature* feature) override { m_callback(feature); }

private:
    Callback m_callback;
};

/// A named, typed thing that speaks text: all that a host configures or triggers is one. This base owns the
/// identity, the three permissions and the observers, and fixes the order of the checks before the type's
/// own work.
/// Threads: host. No lock: the host serialises its calls.
/// Throws:  AIKException where a check refuses, and what the type's own work throws.
class AdapterFeature {
public:
    AdapterFeature(const AdapterFeature&) = delete;
    AdapterFeature& operator=(const AdapterFeature&) = delete;
    virtual ~AdapterFeature() = default;

    virtual tools::logging::Logger* logger() { return m_logger.get(); }
    /// Reloads what the feature caches from the board.
    virtual void refresh() {}
    /// Writes the value as text into `val`, a host buffer of kHostTextSize bytes.
    virtual void read(char* val);
    /// Takes the value from text, then calls the observers. A failed write calls none.
    virtual void write(const char* val);
    /// Checks `available` alone, and calls no observer.
    virtual void execute();
    /// The name of an enumeration's entry; what `index` counts depends on the kind.
    virtual std::string validEnum(int32_t index);

    const std::string& name() const { return m_name; }
    void setName(std::string name) { m_name = std::move(name); }
    const std::string& description() const { return m_description; }
    void setDescription(std::string description) { m_description = std::move(description); }

    bool readable() const { return m_readable; }
    void setReadable(bool readable) { m_readable = readable; }
    bool writeable() const { return m_writeable; }
    void setWriteable(bool writeable) { m_writeable = writeable; }
    bool available() const { return m_available; }
    void setAvailable(bool available) { m_available = available; }
    const char* readableText() const { return flagText(m_readable); }
    const char* writeableText() const { return flagText(m_writeable); }

    FeatureType type() const { return m_type; }
    void setType(FeatureType type) { m_type = type; }

    /// Not owned: it must live as long as the feature can be written.
    void addObserver(FeatureObserver* observer) { m_observers.push_back(observer); }
    /// In the order of adding, including those that an observer adds meanwhile.
    void notifyObservers();

    /// "True" or "False".
    static const char* flagText(bool flag) { return flag ? "True" : "False"; }

protected:
    explicit AdapterFeature(FeatureType type = FeatureType::None) : m_type(type) {}

    virtual void doRead(char* val) = 0;
    virtual void doWrite(const char* val) = 0;
    virtual void doExecute() = 0;

    /// Records, on the trace level, that a step of an access begins or ends. `sourcePath` is the path of the
    /// source below src/, without its suffix.
    void traceStep(const char* sourcePath, const char* step,
                   const std::source_location& place = std::source_location::current());

private:
    tools::logging::CachedLogger m_logger{"orvo.Cognex.Feature"};
    std::string m_name;
    std::string m_description;
    bool m_readable = false;
    bool m_writeable = false;
    bool m_available = false;
    FeatureType m_type;
    std::vector<FeatureObserver*> m_observers;
};

inline constexpr size_t kHostTextSize = 256;   // of the host's buffers for values and failures, with the NUL

/// Copies the whole text and its NUL: for texts that are short by nature.
void copyWhole(char* destination, const std::string& text);

/// Copies at most kHostTextSize - 1 characters, and adds a NUL.
void copyBounded(char* destination, std::string_view text);

}   // namespace orvo::cognex
