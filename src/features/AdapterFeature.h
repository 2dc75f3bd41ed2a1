#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "tools/logging/Logging.h"

namespace orvo::cognex {

class FeatureObserver;

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

/// A named, typed thing that speaks text: all that a host configures or triggers is one. This base owns the
/// identity, the three permissions and the observers, and the order of the checks before the type's own work.
/// Threads: host. No lock: the host serialises its calls.
/// Throws:  AIKException where a check refuses, and what the type's own work throws.
class AdapterFeature {
public:
    AdapterFeature(const AdapterFeature&) = delete;
    AdapterFeature& operator=(const AdapterFeature&) = delete;
    virtual ~AdapterFeature() = default;

    virtual tools::logging::Logger* logger() { return m_logger.get(); }
    /// Reloads what the feature knows of the thing behind it.
    virtual void refresh() {}
    /// Writes the value as text into `val`, a host buffer of 256 bytes.
    virtual void read(char* val);
    /// Takes the value from text, then tells the observers. A failed write tells nobody.
    virtual void write(const char* val);
    /// Asks for `available` alone, and tells no observer.
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
    /// In the order of adding, those included that an observer adds meanwhile.
    void notifyObservers();

    /// "True" or "False".
    static const char* flagText(bool flag) { return flag ? "True" : "False"; }

protected:
    explicit AdapterFeature(FeatureType type = FeatureType::None) : m_type(type) {}

    virtual void doRead(char* val) = 0;
    virtual void doWrite(const char* val) = 0;
    virtual void doExecute() = 0;

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

}   // namespace orvo::cognex
