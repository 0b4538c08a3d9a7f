// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Models/MediaFormat.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace {

using CodecTable = QHash<OutputContainer, QSet<QString>>;

CodecTable makeVideoTable()
{
    return {
        {OutputContainer::mp4, {u"h264"_s, u"hevc"_s, u"mpeg4"_s, u"av1"_s}},
        {OutputContainer::mov, {u"h264"_s, u"hevc"_s, u"mpeg4"_s, u"prores"_s, u"dnxhd"_s}},
        {OutputContainer::mkv,
         {u"h264"_s, u"hevc"_s, u"mpeg4"_s, u"vp9"_s, u"vp8"_s, u"av1"_s, u"prores"_s,
          u"mpeg2video"_s, u"theora"_s, u"ffv1"_s}},
        {OutputContainer::webm, {u"vp9"_s, u"vp8"_s, u"av1"_s}},
        {OutputContainer::avi, {u"mpeg4"_s, u"mpeg2video"_s, u"h264"_s}},
    };
}

CodecTable makeAudioTable()
{
    return {
        {OutputContainer::mp4, {u"aac"_s, u"mp3"_s, u"ac3"_s, u"eac3"_s}},
        {OutputContainer::mov, {u"aac"_s, u"mp3"_s, u"ac3"_s, u"alac"_s, u"pcm_s16le"_s}},
        {OutputContainer::mkv,
         {u"aac"_s, u"mp3"_s, u"ac3"_s, u"eac3"_s, u"opus"_s, u"vorbis"_s, u"flac"_s,
          u"pcm_s16le"_s}},
        {OutputContainer::webm, {u"opus"_s, u"vorbis"_s}},
        {OutputContainer::avi, {u"mp3"_s, u"ac3"_s, u"pcm_s16le"_s}},
    };
}

const QSet<QString> &codecsFor(const CodecTable &table, OutputContainer container)
{
    return table.constFind(container).value();
}

} // namespace

QString labelKey(CodecChoice choice)
{
    switch (choice) {
    case CodecChoice::automatic:
        return u"advanced.codec.auto"_s;
    case CodecChoice::h264VideoToolbox:
        return u"advanced.codec.h264"_s;
    case CodecChoice::hevcVideoToolbox:
        return u"advanced.codec.hevc"_s;
    case CodecChoice::softwareX264:
        return u"advanced.codec.software"_s;
    case CodecChoice::proresVideoToolbox:
        return u"advanced.codec.prores"_s;
    case CodecChoice::svtAV1:
        return u"advanced.codec.av1"_s;
    }
    Q_UNREACHABLE();
}

const QSet<QString> &CodecCompat::videoByContainer(OutputContainer container)
{
    static const CodecTable table = makeVideoTable();
    return codecsFor(table, container);
}

const QSet<QString> &CodecCompat::audioByContainer(OutputContainer container)
{
    static const CodecTable table = makeAudioTable();
    return codecsFor(table, container);
}

bool CodecCompat::videoOK(const std::optional<QString> &codec, OutputContainer container)
{
    if (!codec || codec->isEmpty()) {
        return false;
    }
    return videoByContainer(container).contains(codec->toLower());
}

bool CodecCompat::audioOK(const std::optional<QString> &codec, OutputContainer container)
{
    if (!codec || codec->isEmpty()) {
        return true;
    }
    return audioByContainer(container).contains(codec->toLower());
}
