#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "base/published.h"
#include "core/downloads.h"
#include "core/live_geo_cache.h"
#include "core/pass_info.h"
#include "core/pass_queue.h"
#include "core/satellite.h"
#include "core/satellite_preferences.h"
#include "core/serial_work.h"
#include "core/tick.h"
#include "elements/custom_tle_store.h"
#include "elements/tle_manager.h"
#include "elements/user_tle_source.h"
#include "platform/machine.h"
#include "rig/rigctld_client.h"
#include "transmitters/satnogs_batch.h"
#include "transmitters/satnogs_cache.h"
#include "transmitters/transmitter.h"

namespace veloran {

/// What differs between the real program, the demo and a test, beside the machine.
struct AppConfig {
    std::string elementServiceBase = "https://celestrak.org";
    std::string transmitterServiceBase = "https://db.satnogs.org";
    PresetHosts presetHosts;
    /// The database of channels that may come with the program; the built-in list without it.
    std::optional<std::filesystem::path> transmitterFile;
};

/// The one observable state of the program and all its operations. Views read its fields, hear
/// `objectWillChange` before each change, and call its operations. Main thread only.
class AppState : public std::enable_shared_from_this<AppState> {
  public:
    static std::shared_ptr<AppState> create(const Machine& machine, AppConfig config = {});
    ~AppState();

    /// Sent before any published field changes, and for changes that pass through none.
    ChangeNotifier objectWillChange;

    // ---- Observer. Degrees north and east, metres. Persisted but for gridLocator.
    Published<double> obsLatitude{objectWillChange};
    Published<double> obsLongitude{objectWillChange};
    Published<double> obsAltitude{objectWillChange};
    Published<std::string> obsName{objectWillChange};
    Published<std::string> gridLocator{objectWillChange};
    Published<bool> obs2Enabled{objectWillChange};
    Published<std::string> obs2Name{objectWillChange};
    Published<double> obs2Latitude{objectWillChange};
    Published<double> obs2Longitude{objectWillChange};

    // ---- Radio settings. Persisted.
    Published<std::string> rigHost{objectWillChange};
    Published<std::int64_t> rigPort{objectWillChange};
    Published<bool> rigAutoConnect{objectWillChange};  ///< stored and shown; nothing acts on it
    Published<double> dopplerUpdateHz{objectWillChange};
    Published<bool> forceClassicRigctld{objectWillChange};
    Published<SatProtoRestPattern> satProtoRestPattern{objectWillChange,
                                                       SatProtoRestPattern::selectedDL};

    // ---- Bodies and selection.
    Published<std::vector<SatellitePtr>> satellites{objectWillChange};         ///< sorted by name
    Published<std::set<std::int64_t>> selectedSatelliteIds{objectWillChange};  ///< persisted
    Published<std::optional<PassInfo>> selectedPass{objectWillChange};
    Published<std::optional<Transmitter>> selectedTransmitter{objectWillChange};
    Published<std::optional<Transmitter>> selectedUplinkTransmitter{objectWillChange};

    // ---- The tracking session and the figures of its last tick. Hz, Hz/s, degrees, km.
    Published<bool> isTracking{objectWillChange};
    Published<SatellitePtr> trackingSatellite{objectWillChange};
    Published<double> currentDopplerShift{objectWillChange};
    Published<double> currentDopplerRate{objectWillChange};
    Published<double> currentCorrectedFreq{objectWillChange};
    Published<double> currentAzimuth{objectWillChange};
    Published<double> currentElevation{objectWillChange};
    Published<double> currentRange{objectWillChange};
    Published<double> currentUplinkFreq{objectWillChange};  ///< 0 without an uplink
    Published<double> currentSatCalibration{objectWillChange};
    Published<double> currentRIT{objectWillChange};
    Published<double> currentPassbandOffset{objectWillChange};

    // ---- What the rig client reports.
    Published<bool> rigConnected{objectWillChange};
    Published<RigProtocolMode> rigProtocolMode{objectWillChange, RigProtocolMode::unknown};
    Published<bool> rigSatProtoArmed{objectWillChange};
    Published<std::string> rigSatProtoStatus{objectWillChange};

    // ---- The queue of marked passes. In memory only.
    Published<QueueIds> queuedPassIds{objectWillChange};
    Published<std::optional<PassConflict>> pendingPassConflict{objectWillChange};

    // ---- View state of the core.
    Published<Instant> timelineStartTime{objectWillChange};
    Published<double> timelineHoursVisible{objectWillChange};                 ///< persisted
    Published<std::set<std::string>> subscribedCategories{objectWillChange};  ///< persisted
    Published<double> tleAge{objectWillChange};  ///< seconds, oldest cached group
    Published<bool> isLoadingTLEs{objectWillChange};
    Published<Downloads> downloads{objectWillChange};  ///< in memory only
    Published<std::string> statusMessage{objectWillChange};
    /// Share done of the newest search of passes, 0 to 1, in whole percents; absent when none is
    /// under way or it is one of few bodies.
    Published<std::optional<double>> passProgress{objectWillChange};
    Published<bool> showSettings{objectWillChange};
    Published<bool> showSatelliteList{objectWillChange};
    Published<double> minAutoTrackElevation{objectWillChange};  ///< degrees, persisted
    Published<bool> polarBearingLine{objectWillChange};         ///< persisted

    // ---- Start-up and loading (app_state_loading.cpp). Of loads that overlap the newest stands:
    // an older one that ends later changes nothing.
    void loadData();
    void refreshTLEs();  ///< downloads every subscribed group anew
    std::vector<SatellitePtr> celestialBodies() const;
    void selectDefaults();
    std::string tleAgeString() const;
    /// Why there are no elements, if there are none although groups are subscribed: the last
    /// downloads of those that gave none.
    std::vector<DownloadOutcome> failedDownloads() const;
    void startPassUpdateTimer();

    // ---- Passes (app_state_passes.cpp).
    void computeAllPasses();
    std::optional<TopocentricResult> cachedObserve(const Satellite& sat, Instant baseTime,
                                                   double offset = 0);
    std::vector<SatellitePtr> selectedSatellites() const;
    std::vector<std::pair<SatellitePtr, PredictedPass>> allPassesSorted() const;
    void toggleSatellite(const SatellitePtr& satellite);
    /// What toggling each in turn comes to, as one change with one search of passes.
    void toggleSatellites(const std::vector<SatellitePtr>& list);

    // ---- The session (app_state_session.cpp).
    /// Takes copies: what is handed in may be the very fields that a running session gives up.
    void startTracking(SatellitePtr satellite, std::optional<Transmitter> transmitter);
    void stopTracking();
    void updateDopplerRate(double hz);

    // ---- The queue (app_state_queue.cpp).
    /// A pass from an earlier list of the body counts as the one that it has become.
    bool isPassQueued(const Satellite& satellite, const PredictedPass& pass) const;
    /// The identifier under which it is queued.
    std::optional<std::string> queuedPassId(const Satellite& satellite,
                                            const PredictedPass& pass) const;
    void togglePassQueued(const SatellitePtr& satellite, const PredictedPass& shown);
    void resolveConflictReplace(const PassConflict& conflict);
    void resolveConflictKeepExisting();
    void clearPassQueue();
    /// Where each entry stands; what the queue skips says why.
    std::vector<QueueEntry> queueEntries() const;

    // ---- The user's own elements (app_state_elements.cpp).
    UserTLESourceStore userSources() const { return UserTLESourceStore(machine_.settings); }
    const std::vector<UserTLESource>& presetSources() const { return presets_; }
    /// Reads a pasted text or a file's content on a worker, stores what it holds, then reports. The
    /// views load the data anew when that is wanted. Changes take place in the order given, and
    /// also when this has gone meanwhile; `then`, which may be empty, is not called in that case.
    void importElements(std::string text, std::function<void(CustomTLEStore::ImportResult)> then);
    void removeImported(std::int64_t noradId, std::function<void()> then);
    void clearImported(std::function<void()> then);

    // ---- Tuning (app_state_tuning.cpp).
    void bumpSatCalibration(double deltaHz);
    void saveSatCalibration();
    void clearCalibration();
    void bumpRIT(double deltaHz);
    void clearRIT();
    void bumpPassbandOffset(double deltaHz);
    void clearPassbandOffset();

    // ---- Channels (app_state_transmitters.cpp).
    void selectTransmitter(const std::optional<Transmitter>& transmitter,
                           const SatellitePtr& satellite);
    std::optional<Transmitter> preferredTransmitter(const Satellite& satellite) const;
    /// Asks the service, or its cache, for the channels of every selected body.
    void refreshTransmittersFromSatNOGS();

    Instant now() const { return machine_.clock.now(); }
    /// For what views show of the time.
    const Clock& clock() const { return machine_.clock; }
    MainLoop& loop() const { return machine_.loop; }
    const std::shared_ptr<RigctldClient>& rigClient() const { return rigClient_; }
    const TransmitterMap& transmitterDB() const { return transmitterDB_; }
    TLEManager& elements() { return elements_; }
    /// For what only one view shows and remembers.
    SettingsStore& settings() { return machine_.settings; }
    LocationService& location() { return machine_.location; }

    /// Look angles now and half a second ahead, for the tick; the tracked body's own propagation
    /// unless a test hands in another.
    struct TickAngles {
        TopocentricResult now;
        std::optional<TopocentricResult> ahead;
    };
    using TickAnglesFn = std::function<std::optional<TickAngles>(const Satellite&, Instant now)>;
    void setTickAngles(TickAnglesFn angles) { tickAngles_ = std::move(angles); }
    /// One firing of the tracking timer.
    void updateTracking();

  private:
    AppState(const Machine& machine, AppConfig config);

    void restoreSettings();
    template <class T, class Read>
    void persist(Published<T>& field, const char* key, Read read);

    void loadTransmitterDB(std::function<void()> then);
    void loadBuiltinTransmitters();
    const Satellite& presentBody(const Satellite& body) const;
    std::optional<QueueView> queueView() const;
    void startQueueTimerIfNeeded();
    void stopQueueTimerIfEmpty();
    void processPassQueue();

    void announceLoad();
    void beginLoad();
    void fetchElements();
    FetchWatch watchOfLoad();
    using ShowSatellites = void (AppState::*)(std::vector<SatellitePtr> bodies, double oldest);
    void buildSatellites(std::vector<TLEData> elements, ShowSatellites show);
    void showSatellites(std::vector<SatellitePtr> bodies, double oldestElements);
    void showCachedSatellites(std::vector<SatellitePtr> bodies, double oldestElements);
    void replaceSatellites(std::vector<SatellitePtr> bodies);
    std::string statusOfPasses(std::size_t count) const;

    struct PassRun;
    void storePasses(PassRun& run, std::size_t index, PassList found);
    void replacePasses(Satellite& body, PassList found, const PassRun& run);
    void carryQueueOver(const Satellite& body, const PassList& former);
    void finishPasses(const PassRun& run);
    void showProgress(const PassRun& run);

    void replaceTransmitters(std::int64_t id, std::vector<Transmitter> list);
    void showCachedTransmitters();
    void fetchNewTransmitters(const std::vector<SatellitePtr>& ticked);
    void loadTuning(const Satellite& satellite, const std::optional<Transmitter>& given);
    void pickUplink(const Satellite& satellite);
    void createRigClient();
    void connectOrArm();
    void arm();
    void startTrackingTimer();
    void rigStatusReported(bool connected);
    void rigStatusChanged(bool connected);
    void rigModeChanged(RigProtocolMode mode);
    void rigArmedChanged(bool armed);
    void rigSatModeLost();

    std::optional<TickAngles> propagatedAngles(const Satellite& satellite, Instant at) const;
    TickInput tickInput(const TickAngles& angles) const;
    void publish(const TickInput& input, const DopplerFigures& figures);
    void send(const RigCommand& command);

    std::function<void()> whileAlive(std::function<void()> then);
    /// The operation as a callback that does nothing once this has gone.
    template <class... Args>
    std::function<void(Args...)> weakly(void (AppState::*operation)(Args...)) {
        return [weak = weak_from_this(), operation](Args... args) {
            if (const auto self = weak.lock()) (self.get()->*operation)(std::move(args)...);
        };
    }

    /// A step of the present load, member or function of this, as a callback that does nothing once
    /// this has gone or a newer load has begun.
    template <class Step>
    auto inThisLoad(Step step) {
        return [weak = weak_from_this(), load = loads_, step = std::move(step)](auto&&... args) {
            const auto self = weak.lock();
            if (!self || self->loads_ != load) return;
            std::invoke(step, *self, std::forward<decltype(args)>(args)...);
        };
    }

    Machine machine_;
    AppConfig config_;
    std::vector<UserTLESource> presets_;
    CustomTLEStore imported_;
    TLEManager elements_;
    SatNOGSCache channelCache_;
    std::optional<SatNOGSBatch> channelBatch_;  // from the first tick on
    std::set<std::int64_t> fetchedChannels_;    // bodies whose channels this load has brought
    SatellitePreferences preferences_;
    CalibrationOffsetStore calibrations_;
    std::shared_ptr<RigctldClient> rigClient_;  // from the first session to the end of the process
    std::unique_ptr<Timer> trackingTimer_;
    std::unique_ptr<Timer> passUpdateTimer_;
    std::unique_ptr<Timer> passQueueTimer_;
    SerialWork importWork_;
    std::uint64_t loads_ = 0;                    // begun so far
    std::uint64_t passRuns_ = 0;                 // begun so far
    std::uint64_t catalogues_ = 0;               // shown so far
    std::optional<QueuedPassRef> followedPass_;  // see QueueView::followed
    TransmitterMap transmitterDB_;
    LiveGeoCache liveGeoCache_;
    TickAnglesFn tickAngles_;
};

}  // namespace veloran
