#pragma once

#include "Oru/BusinessEntityModel/Edits/Sequence.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroup.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"

#include <string>
#include <vector>

/// What is measured with. Two objects of the same number are equal; no two numbers share an identifier.
namespace Oru::Benchmarks {

using BusinessEntityModel::Edits::Sequence;
using DataModel::MediaAssets::AnglesMediaAssetGroup;
using DataModel::MediaAssets::MediaAsset;

/// A clip as a catalogue holds them, about 50 rows: the asset with 2 time bounds, the operator's row, 3
/// keywords, 8 metadata entries, 2 annotations, 1 resource of 1 stream of 6 essences, and 3 tracks of 5
/// channels.
MediaAsset MakeClip(int number);
/// The identifier of `MakeClip(number)`.
DataModel::MediaAssets::MediaAssetId ClipId(int number);
std::vector<MediaAsset> MakeClips(int firstNumber, int count);

/// The last word of a clip's name, which no other clip's name holds.
std::string LastWord(const std::string& name);

/// A multi-angle group of the four clips from a number on, with the operator's identity.
AnglesMediaAssetGroup MakeGroup(int number, int firstClip);

/// A sequence with 4 metadata entries and the operator's profile.
Sequence MakeSequence(int number);

/// Changes each kind of content of a clip that is not part of its identity.
void Edit(MediaAsset& clip);

}  // namespace Oru::Benchmarks
