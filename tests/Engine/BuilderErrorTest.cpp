// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/BuilderError.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(BuilderError, each_case_has_its_fixed_description)
{
    using Case = BuilderError::Case;
    EXPECT_EQ(BuilderError(Case::noSegments).errorDescription(), u"no trim segments"_s);
    EXPECT_EQ(BuilderError(Case::noAudioTrack).errorDescription(), u"no audio track"_s);
    EXPECT_EQ(BuilderError(Case::vp9Unavailable).errorDescription(),
              u"libvpx-vp9 encoder not available"_s);
}

TEST(BuilderError, it_tells_its_case)
{
    for (const auto kind : {BuilderError::Case::noSegments, BuilderError::Case::noAudioTrack,
                            BuilderError::Case::vp9Unavailable}) {
        EXPECT_EQ(BuilderError(kind).kind(), kind);
    }
}

TEST(BuilderError, it_is_caught_as_a_described_error)
{
    QString description;

    try {
        throw BuilderError(BuilderError::Case::noAudioTrack);
    } catch (const DescribedError &error) {
        description = error.errorDescription();
    }

    EXPECT_EQ(description, u"no audio track"_s);
}
