#include "CorvaneCore/widgets/WidgetCoding.hpp"

#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/workspace/ProfileCoding.hpp"

#include <algorithm>
#include <type_traits>
#include <utility>

namespace corvane {

namespace {

// Each settings record lists its fields once; the same list drives reading and writing. A field
// the file leaves out keeps the record's default; `required` fields fail when missing.

template <typename V> void fields(TimerSettings& s, V& v) {
    v("presets", s.presets);
    v("tintHex", s.tintHex);
}
template <typename V> void fields(PomodoroSettings& s, V& v) {
    v("focus", s.focus);
    v("shortBreak", s.shortBreak);
    v("longBreak", s.longBreak);
    v("cyclesBeforeLongBreak", s.cyclesBeforeLongBreak);
    v("startsBreaksAutomatically", s.startsBreaksAutomatically);
    v("ringsAtTheEnd", s.ringsAtTheEnd);
}
template <typename V> void fields(MusicSettings& s, V& v) {
    v("showsArtwork", s.showsArtwork);
}
template <typename V> void fields(CalendarSelection& s, V& v) {
    v("accountIDs", s.accountIDs);
    v("calendarIDs", s.calendarIDs);
}
template <typename V> void fields(CalendarSettings& s, V& v) {
    v("daysAhead", s.daysAhead);
    v("showsAllDay", s.showsAllDay);
    v("turnsTextSideways", s.turnsTextSideways);
    v("style", s.style);
    v("calendars", s.calendars);
}
template <typename V> void fields(BatterySettings& s, V& v) {
    v("showsPercentage", s.showsPercentage);
    v("style", s.style);
}
template <typename V> void fields(ClockSettings& s, V& v) {
    v("timeZoneID", s.timeZoneID);
    v("showsSeconds", s.showsSeconds);
    v("uses24Hour", s.uses24Hour);
    v("isAnalog", s.isAnalog);
}
template <typename V> void fields(CountdownSettings& s, V& v) {
    v("target", s.target);
    v("countsUpAfter", s.countsUpAfter);
}
template <typename V> void fields(TimeProgressSettings& s, V& v) {
    v("scope", s.scope);
}
template <typename V> void fields(ActivitySettings& s, V& v) {
    v("showsCPU", s.showsCPU);
    v("showsMemory", s.showsMemory);
    v("style", s.style);
}
template <typename V> void fields(NetworkSettings& s, V& v) {
    v("interface", s.interface);
    v("style", s.style);
}
template <typename V> void fields(NoteSettings& s, V& v) {
    v("text", s.text);
    v("colorHex", s.colorHex);
}
template <typename V> void fields(ReminderSettings& s, V& v) {
    v("listID", s.listID);
    v("showsCompleted", s.showsCompleted);
    v("daysAhead", s.daysAhead);
    v("style", s.style);
}
template <typename V> void fields(ShortcutSettings& s, V& v) {
    v("name", s.name);
    v("symbolName", s.symbolName);
    v("colorHex", s.colorHex);
}
template <typename V> void fields(KeyboardLockSettings& s, V& v) {
    v("locksPointer", s.locksPointer);
    v("holdSeconds", s.holdSeconds);
    v("autoUnlockMinutes", s.autoUnlockMinutes);
    v("playsSound", s.playsSound);
}
template <typename V> void fields(WeatherSettings& s, V& v) {
    v("cityName", s.cityName);
    v("latitude", s.latitude);
    v("longitude", s.longitude);
    v("unit", s.unit);
    v("showsApparent", s.showsApparent);
    v("style", s.style);
}
template <typename V> void fields(ClaudeUsageSettings& s, V& v) {
    v("shows", s.shows);
    v("scope", s.scope);
    v("budget", s.budget);
}
template <typename V> void fields(GitHubSettings& s, V& v) {
    v("shows", s.shows);
    v("repositories", s.repositories);
    v("includesDrafts", s.includesDrafts);
    v("limit", s.limit);
}
template <typename V> void fields(PetSettings& s, V& v) {
    v("species", s.species);
    v("coatID", s.coatID);
    v("follows", s.follows);
    v("range", s.range);
    v("size", s.size);
    v("showsReading", s.showsReading);
    v("staysWhenDockHides", s.staysWhenDockHides);
}
template <typename V> void fields(ColourPickerSettings& s, V& v) {
    v("format", s.format);
    v("copiesOnPick", s.copiesOnPick);
    v("historyLimit", s.historyLimit);
    v("hotkey", s.hotkey);
}
template <typename V> void fields(ClipboardSettings& s, V& v) {
    v("historyLimit", s.historyLimit);
    v("retentionDays", s.retentionDays);
    v("persistAcrossRestarts", s.persistAcrossRestarts);
    v("showLastPreviewOnTile", s.showLastPreviewOnTile);
    v("ignorePasswordManagers", s.ignorePasswordManagers);
    v("maxImageBytes", s.maxImageBytes);
    v("fetchWebsitePreviews", s.fetchWebsitePreviews);
}
template <typename V> void fields(Bookmark& s, V& v) {
    v.required("id", s.id);
    v.required("address", s.address);
    v("title", s.title);
}
template <typename V> void fields(BookmarkSettings& s, V& v) {
    v("links", s.links);
    v("browserBundleIdentifier", s.browserBundleIdentifier);
}
template <typename V> void fields(EmojiSettings& s, V& v) {
    v("skinTone", s.skinTone);
    v("recentLimit", s.recentLimit);
    v("closesAfterCopy", s.closesAfterCopy);
}
template <typename V> void fields(ScreenshotSettings& s, V& v) {
    v("folderPath", s.folderPath);
    v("shownCount", s.shownCount);
    v("click", s.click);
    v("tileShowsLatest", s.tileShowsLatest);
}
template <typename V> void fields(FilesSettings& s, V& v) {
    v("folderPath", s.folderPath);
    v("shownCount", s.shownCount);
    v("click", s.click);
    v("showsNewCount", s.showsNewCount);
    v("seenAt", s.seenAt);
}
template <typename V> void fields(DropZoneShelf& s, V& v) {
    v("paths", s.paths);
}
template <typename V> void fields(ShelfSettings& s, V& v) {
    v("shelf", s.shelf);
    v("click", s.click);
    v("removesOnDragOut", s.removesOnDragOut);
}
template <typename V> void fields(WaterSettings& s, V& v) {
    v("goal", s.goal);
    v("glass", s.glass);
    v("unit", s.unit);
    v("showsCountOnTile", s.showsCountOnTile);
    v("style", s.style);
    v("refillMinutes", s.refillMinutes);
}
template <typename V> void fields(ConverterSettings& s, V& v) {
    v("category", s.category);
    v("from", s.from);
    v("to", s.to);
    v("value", s.value);
}

// Fix-ups that need the whole record, after its fields are read.
template <typename Record> void afterDecoding(Record&, const JsonReader&) {}
void afterDecoding(ColourPickerSettings& s, const JsonReader&) {
    s.historyLimit = std::clamp(s.historyLimit, ColourPickerSettings::minHistoryLimit,
                                ColourPickerSettings::maxHistoryLimit);
}
void afterDecoding(ConverterSettings& s, const JsonReader& reader) {
    // The record's own default units are length's; another category needs its own pair.
    auto [from, to] = ConverterSettings::defaultUnits(s.category);
    if (!reader.has("from")) s.from = from;
    if (!reader.has("to")) s.to = to;
}

template <typename T> struct IsOptional : std::false_type {};
template <typename T> struct IsOptional<std::optional<T>> : std::true_type {};
template <typename T> struct IsVector : std::false_type {};
template <typename T> struct IsVector<std::vector<T>> : std::true_type {};

template <typename Record> Record decodeRecord(const JsonReader& reader);
template <typename Record> Json encodeRecord(const Record& record);

template <typename T> void readInto(const JsonReader& reader, T& out) {
    if constexpr (std::is_same_v<T, bool>)
        out = reader.boolean();
    else if constexpr (std::is_same_v<T, int> || std::is_same_v<T, std::int64_t>)
        out = reader.integer<T>();
    else if constexpr (std::is_same_v<T, double>)
        out = reader.number();
    else if constexpr (std::is_same_v<T, std::string>)
        out = reader.string();
    else if constexpr (std::is_same_v<T, Date>)
        out = Date{reader.number()};
    else if constexpr (std::is_same_v<T, Uuid>)
        out = reader.uuid();
    else if constexpr (std::is_same_v<T, Hotkey>)
        out = decodeHotkey(reader);
    else if constexpr (NamedEnum<T>)
        out = reader.rawValue<T>([](std::string_view raw) { return fromCaseName<T>(raw); },
                                 EnumCases<T>::typeName);
    else if constexpr (IsOptional<T>::value) {
        typename T::value_type value{};
        readInto(reader, value);
        out = std::move(value);
    } else if constexpr (IsVector<T>::value) {
        T values;
        for (const auto& element : reader.array()) {
            typename T::value_type value{};
            readInto(element, value);
            values.push_back(std::move(value));
        }
        out = std::move(values);
    } else
        out = decodeRecord<T>(reader);
}

template <typename T> Json writeValue(const T& value) {
    if constexpr (std::is_same_v<T, Date>)
        return value.sinceReferenceDate;
    else if constexpr (std::is_same_v<T, Uuid>)
        return value.string();
    else if constexpr (std::is_same_v<T, Hotkey>)
        return encodeHotkey(value);
    else if constexpr (NamedEnum<T>)
        return std::string(caseName(value));
    else if constexpr (IsVector<T>::value) {
        auto array = Json::array();
        for (const auto& element : value)
            array.push_back(writeValue(element));
        return array;
    } else if constexpr (std::is_arithmetic_v<T> || std::is_same_v<T, std::string>)
        return value;
    else
        return encodeRecord(value);
}

struct FieldReader {
    const JsonReader& reader;

    template <typename T> void operator()(std::string_view key, T& field) const {
        if (auto value = reader.optional(key)) readInto(*value, field);
    }
    template <typename T> void required(std::string_view key, T& field) const {
        readInto(reader[key], field);
    }
};

struct FieldWriter {
    Json& object;

    // Unset optionals are left out, as the reader treats a missing key as unset.
    template <typename T> void operator()(std::string_view key, const T& field) const {
        if constexpr (IsOptional<T>::value) {
            if (field) object[std::string(key)] = writeValue(*field);
        } else
            object[std::string(key)] = writeValue(field);
    }
    template <typename T> void required(std::string_view key, const T& field) const { (*this)(key, field); }
};

// Every field, unset optionals as null: what an editor of the record needs to offer.
struct FieldLister {
    Json& object;

    template <typename T> void operator()(std::string_view key, const T& field) const {
        if constexpr (IsOptional<T>::value)
            object[std::string(key)] = field ? writeValue(*field) : Json(nullptr);
        else
            object[std::string(key)] = writeValue(field);
    }
    template <typename T> void required(std::string_view key, const T& field) const { (*this)(key, field); }
};

template <typename Record> Record decodeRecord(const JsonReader& reader) {
    reader.object();
    Record record{};
    FieldReader visitor{reader};
    fields(record, visitor);
    afterDecoding(record, reader);
    return record;
}

template <typename Record> Json encodeRecord(const Record& record) {
    Json object = Json::object();
    FieldWriter visitor{object};
    Record copy = record; // the field lists take a mutable record, so that one list serves both ways
    fields(copy, visitor);
    return object;
}

template <typename T>
constexpr bool isPayloadless =
    std::is_same_v<T, StopwatchKind> || std::is_same_v<T, AirdropKind> || std::is_same_v<T, FansKind>;

// The order in which a kind object's keys are tried; it differs from the declaration order,
// and the first key present wins.
constexpr std::array<WidgetKind, 31> kDecodingOrder = {
    WidgetKind::collection, WidgetKind::timer,        WidgetKind::pomodoro,     WidgetKind::music,
    WidgetKind::calendar,   WidgetKind::battery,      WidgetKind::clock,        WidgetKind::stopwatch,
    WidgetKind::countdown,  WidgetKind::timeProgress, WidgetKind::activity,     WidgetKind::network,
    WidgetKind::note,       WidgetKind::reminders,    WidgetKind::shortcut,     WidgetKind::airdrop,
    WidgetKind::fans,       WidgetKind::keyboardLock, WidgetKind::weather,      WidgetKind::claudeUsage,
    WidgetKind::github,     WidgetKind::pet,          WidgetKind::colourPicker, WidgetKind::clipboard,
    WidgetKind::bookmarks,  WidgetKind::emoji,        WidgetKind::screenshots,  WidgetKind::files,
    WidgetKind::shelf,      WidgetKind::water,        WidgetKind::converter,
};

using KindValue = DockWidget::Kind::Value;

template <std::size_t I> DockWidget::Kind decodeAlternative(const JsonReader& nested) {
    using T = std::variant_alternative_t<I, KindValue>;
    if constexpr (isPayloadless<T>) {
        return KindValue(std::in_place_index<I>);
    } else if constexpr (std::is_same_v<T, DockWidget::Collection>) {
        nested.object();
        DockWidget::Collection collection;
        for (const auto& app : nested["apps"].array())
            collection.apps.push_back(decodeAppEntry(app));
        if (auto layout = nested.optional("layout")) readInto(*layout, collection.layout);
        return KindValue(std::in_place_index<I>, std::move(collection));
    } else {
        nested.object();
        return KindValue(std::in_place_index<I>, decodeRecord<T>(nested["_0"]));
    }
}

template <std::size_t... I>
DockWidget::Kind decodeAlternative(WidgetKind which, const JsonReader& nested, std::index_sequence<I...>) {
    using Decoder = DockWidget::Kind (*)(const JsonReader&);
    static constexpr std::array<Decoder, sizeof...(I)> decoders = {&decodeAlternative<I>...};
    return decoders[static_cast<std::size_t>(which)](nested);
}

std::optional<int> optionalSlot(const JsonReader& reader) {
    if (auto slot = reader.optional("slot")) return slot->integer<int>();
    return std::nullopt;
}

} // namespace

// The workspace coding owns the form of an application entry, under the "app" case of an item.
Json encodeAppEntry(const AppEntry& entry) {
    return encodeDockItem(DockItem(entry))["app"]["_0"];
}

AppEntry decodeAppEntry(const JsonReader& reader) {
    reader.object();
    Json wrapped = Json::object({{"app", Json::object({{"_0", reader.json()}})}});
    return *decodeDockItem(JsonReader(wrapped, reader.path())).app();
}

Json encodeKind(const DockWidget::Kind& kind) {
    const std::string key(kind.name());
    return std::visit(
        [&](const auto& payload) -> Json {
            using T = std::decay_t<decltype(payload)>;
            if constexpr (isPayloadless<T>) {
                return Json::object({{key, Json::object()}});
            } else if constexpr (std::is_same_v<T, DockWidget::Collection>) {
                auto apps = Json::array();
                for (const auto& app : payload.apps)
                    apps.push_back(encodeAppEntry(app));
                return Json::object(
                    {{key, Json::object({{"apps", std::move(apps)},
                                         {"layout", std::string(caseName(payload.layout))}})}});
            } else {
                return Json::object({{key, Json::object({{"_0", encodeRecord(payload)}})}});
            }
        },
        kind.value);
}

Json encodeSettingsFields(const DockWidget::Kind& kind) {
    return std::visit(
        [&](const auto& payload) -> Json {
            using T = std::decay_t<decltype(payload)>;
            if constexpr (isPayloadless<T>) {
                return Json::object();
            } else if constexpr (std::is_same_v<T, DockWidget::Collection>) {
                return encodeKind(kind)[std::string(kind.name())];
            } else {
                Json object = Json::object();
                FieldLister visitor{object};
                T copy = payload;
                fields(copy, visitor);
                return object;
            }
        },
        kind.value);
}

DockWidget::Kind decodeKind(const JsonReader& reader) {
    reader.object();
    for (auto which : kDecodingOrder) {
        const std::string key(caseName(which));
        // Presence alone decides, as with a null value: such a kind fails below instead of
        // falling through to a later key.
        if (reader.json().contains(key))
            return decodeAlternative(which, JsonReader(reader.json()[key], reader.childPath(key)),
                                     std::make_index_sequence<std::variant_size_v<KindValue>>());
    }
    reader.fail(DecodingError::Kind::dataCorrupted, "Unknown widget kind");
}

Json encodeDockWidget(const DockWidget& widget) {
    Json object = Json::object({{"id", widget.id.string()}, {"name", widget.name}});
    if (widget.slot) object["slot"] = *widget.slot;
    object["kind"] = encodeKind(widget.kind);
    object["span"] = widget.span;
    return object;
}

DockWidget decodeDockWidget(const JsonReader& reader) {
    reader.object();
    DockWidget widget;
    widget.kind = decodeKind(reader["kind"]);
    widget.id = reader["id"].uuid();
    widget.name = reader["name"].string();
    widget.slot = optionalSlot(reader);
    std::int64_t span = widget.kind.defaultSpan();
    if (auto stored = reader.optional("span")) span = stored->integer<std::int64_t>();
    widget.span = DockWidget::clampedSpan(span, widget.kind);
    return widget;
}

Json encodeWidgetsFile(const WidgetsFile& file) {
    auto widgets = Json::array();
    for (const auto& widget : file.widgets)
        widgets.push_back(encodeDockWidget(widget));
    for (const auto& entry : file.unrecognized)
        widgets.push_back(entry.raw.toJson());
    return Json::object({{"version", file.version}, {"widgets", std::move(widgets)}});
}

WidgetsFile decodeWidgetsFile(const JsonReader& reader) {
    reader.object();
    WidgetsFile file;
    file.version = reader["version"].integer<int>();
    for (const auto& element : reader["widgets"].array()) {
        // Decoded from the kept value rather than the element itself, so that a widget reads
        // the same whether it comes from the file or from a written-back unrecognized entry.
        auto raw = JSONValue::fromJson(element.json());
        auto json = raw.toJson();
        try {
            file.widgets.push_back(decodeDockWidget(JsonReader(json, element.path())));
        } catch (const DecodingError&) {
            file.unrecognized.push_back(UnrecognizedWidget{std::move(raw)});
        } catch (const Json::exception&) {
            file.unrecognized.push_back(UnrecognizedWidget{std::move(raw)});
        }
    }
    return file;
}

std::string widgetsFileText(const WidgetsFile& file) {
    return prettyJson(encodeWidgetsFile(file));
}

WidgetsFile widgetsFileFromText(std::string_view text) {
    auto json = parseJson(text);
    return decodeWidgetsFile(JsonReader(json));
}

} // namespace corvane
