// The project's bin and sequences as the reference host reads them from its project file.

#include "HostQt/Sequences.h"

#include <algorithm>
#include <tuple>

namespace HostQt {

namespace {

KOR::FrameRate ReadRateText(const QString& inText, KOR::FrameRate inDefault)
{
    const QStringList parts = inText.split(QLatin1Char('/'));
    bool numeratorOk = false;
    bool denominatorOk = parts.size() == 1;
    const qint64 numerator = parts.value(0).toLongLong(&numeratorOk);
    const qint64 denominator = parts.size() == 2 ? parts[1].toLongLong(&denominatorOk) : 1;
    return numeratorOk && denominatorOk && numerator > 0 && denominator > 0 ? KOR::FrameRate(numerator, denominator)
                                                                           : inDefault;
}

KOR::Time FrameTime(const QJsonObject& inObject, const char* inKey, KOR::FrameRate inRate)
{
    return KOR::Time(inObject.value(QLatin1String(inKey)).toInteger(), inRate);
}

class MasterClip : public KOR::RefCounted<BE::IMasterClip> {
public:
    MasterClip(std::wstring inName, BE::MediaRef inMedia) : mName(std::move(inName)), mMedia(std::move(inMedia)) {}
    std::wstring GetName() const override { return mName; }
    BE::MediaRef GetMedia() const override { return mMedia; }

private:
    std::wstring mName;
    BE::MediaRef mMedia;
};

class ChildClip : public KOR::RefCounted<BE::IChildClip> {
public:
    ChildClip(std::wstring inName, BE::MasterClipRef inMaster, KOR::Time inIn, KOR::Time inOut)
        : mName(std::move(inName)), mMaster(std::move(inMaster)), mIn(inIn), mOut(inOut)
    {
    }
    std::wstring GetName() const override { return mName; }
    BE::MasterClipRef GetMasterClip() const override { return mMaster; }
    KOR::Time GetInPoint() const override { return mIn; }
    KOR::Time GetOutPoint() const override { return mOut; }

private:
    std::wstring mName;
    BE::MasterClipRef mMaster;
    KOR::Time mIn;
    KOR::Time mOut;
};

struct ClipPlace {
    BE::TrackKind kind = BE::TrackKind::kVideo;
    int track = 0;
    KOR::Time start;
    KOR::Time in;
    KOR::Time out;
};

class Clip : public KOR::RefCounted<BE::IClip> {
public:
    Clip(BE::MasterClipRef inMaster, const ClipPlace& inPlace) : mMaster(std::move(inMaster)), mPlace(inPlace) {}
    std::wstring GetName() const override { return mMaster->GetName(); }
    BE::MasterClipRef GetMasterClip() const override { return mMaster; }
    BE::TrackKind GetTrackKind() const override { return mPlace.kind; }
    int GetTrackIndex() const override { return mPlace.track; }
    KOR::Time GetStart() const override { return mPlace.start; }
    KOR::Time GetInPoint() const override { return mPlace.in; }
    KOR::Time GetOutPoint() const override { return mPlace.out; }

private:
    BE::MasterClipRef mMaster;
    ClipPlace mPlace;
};

class Sequence : public KOR::RefCounted<BE::ISequence> {
public:
    Sequence(std::wstring inName, KOR::FrameRate inRate, std::vector<BE::ClipRef> inClips)
        : mName(std::move(inName)), mRate(inRate), mClips(std::move(inClips))
    {
    }
    std::wstring GetName() const override { return mName; }
    KOR::FrameRate GetFrameRate() const override { return mRate; }
    std::vector<BE::ClipRef> GetClips() const override { return mClips; }

private:
    std::wstring mName;
    KOR::FrameRate mRate;
    std::vector<BE::ClipRef> mClips;
};

class TrackItemSelection : public KOR::RefCounted<BE::ITrackItemSelection> {
public:
    explicit TrackItemSelection(std::vector<BE::ClipRef> inClips) : mClips(std::move(inClips)) {}
    std::vector<BE::ClipRef> GetClips() const override { return mClips; }

private:
    std::vector<BE::ClipRef> mClips;
};

class ProjectItemSelection : public KOR::RefCounted<BE::IProjectItemSelection> {
public:
    ProjectItemSelection(std::vector<BE::MasterClipRef> inMasterClips, std::vector<BE::ChildClipRef> inChildClips,
                         std::vector<BE::SequenceRef> inSequences)
        : mMasterClips(std::move(inMasterClips)), mChildClips(std::move(inChildClips)),
          mSequences(std::move(inSequences))
    {
    }
    std::vector<BE::MasterClipRef> GetMasterClips() const override { return mMasterClips; }
    std::vector<BE::ChildClipRef> GetChildClips() const override { return mChildClips; }
    std::vector<BE::SequenceRef> GetSequences() const override { return mSequences; }

private:
    std::vector<BE::MasterClipRef> mMasterClips;
    std::vector<BE::ChildClipRef> mChildClips;
    std::vector<BE::SequenceRef> mSequences;
};

std::vector<BE::ClipRef> ReadClips(const QJsonArray& inItems, KOR::FrameRate inRate, const MasterClipLookup& inLookup)
{
    std::vector<std::pair<ClipPlace, BE::MasterClipRef>> placed;
    for (const QJsonValue& value : inItems) {
        const QJsonObject item = value.toObject();
        ClipPlace place;
        BE::MasterClipRef master = inLookup(item.value(QStringLiteral("clip")).toString());
        if (!master || !ParseTrackName(item.value(QStringLiteral("track")).toString(), place.kind, place.track)) {
            continue;
        }
        place.start = FrameTime(item, "start", inRate);
        place.in = FrameTime(item, "in", inRate);
        place.out = FrameTime(item, "out", inRate);
        placed.emplace_back(place, std::move(master));
    }
    std::stable_sort(placed.begin(), placed.end(), [](const auto& inA, const auto& inB) {
        return std::tie(inA.first.kind, inA.first.track, inA.first.start) <
               std::tie(inB.first.kind, inB.first.track, inB.first.start);
    });
    std::vector<BE::ClipRef> clips;
    for (auto& [place, master] : placed) {
        clips.emplace_back(new Clip(std::move(master), place));
    }
    return clips;
}

} // namespace

BE::MasterClipRef MakeMasterClip(std::wstring inName, BE::MediaRef inMedia)
{
    return BE::MasterClipRef(new MasterClip(std::move(inName), std::move(inMedia)));
}

bool ParseTrackName(const QString& inName, BE::TrackKind& outKind, int& outIndex)
{
    if (inName.size() < 2 || (inName[0] != QLatin1Char('V') && inName[0] != QLatin1Char('A'))) {
        return false;
    }
    bool ok = false;
    const int number = inName.mid(1).toInt(&ok);
    if (!ok || number < 1) {
        return false;
    }
    outKind = inName[0] == QLatin1Char('V') ? BE::TrackKind::kVideo : BE::TrackKind::kAudio;
    outIndex = number - 1;
    return true;
}

std::vector<BE::SequenceRef> ReadSequences(const QJsonArray& inSequences, KOR::FrameRate inDefaultRate,
                                           const MasterClipLookup& inLookup)
{
    std::vector<BE::SequenceRef> sequences;
    for (const QJsonValue& value : inSequences) {
        const QJsonObject sequence = value.toObject();
        const KOR::FrameRate rate = ReadRateText(sequence.value(QStringLiteral("frameRate")).toString(), inDefaultRate);
        sequences.emplace_back(new Sequence(sequence.value(QStringLiteral("name")).toString().toStdWString(), rate,
                                            ReadClips(sequence.value(QStringLiteral("items")).toArray(), rate, inLookup)));
    }
    return sequences;
}

std::vector<BE::ChildClipRef> ReadChildClips(const QJsonArray& inChildClips, KOR::FrameRate inRate,
                                             const MasterClipLookup& inLookup)
{
    std::vector<BE::ChildClipRef> childClips;
    for (const QJsonValue& value : inChildClips) {
        const QJsonObject child = value.toObject();
        BE::MasterClipRef master = inLookup(child.value(QStringLiteral("clip")).toString());
        if (master) {
            childClips.emplace_back(new ChildClip(child.value(QStringLiteral("name")).toString().toStdWString(),
                                                  std::move(master), FrameTime(child, "in", inRate),
                                                  FrameTime(child, "out", inRate)));
        }
    }
    return childClips;
}

BE::TrackItemSelectionRef MakeTrackItemSelection(std::vector<BE::ClipRef> inClips)
{
    return BE::TrackItemSelectionRef(new TrackItemSelection(std::move(inClips)));
}

BE::ProjectItemSelectionRef MakeProjectItemSelection(std::vector<BE::MasterClipRef> inMasterClips,
                                                     std::vector<BE::ChildClipRef> inChildClips,
                                                     std::vector<BE::SequenceRef> inSequences)
{
    return BE::ProjectItemSelectionRef(
        new ProjectItemSelection(std::move(inMasterClips), std::move(inChildClips), std::move(inSequences)));
}

} // namespace HostQt
