// Rows of generated tables that have always been what they are. Those that a kernel
// reads are pinned by its results, too; `scripts/tables --check` compares them all with
// what their generators give.
#include <common/ext.hpp>

#include <gtest/gtest.h>

#include <cstring>

using namespace qorkes;

namespace {

#include <qor_core/_heap/_qor_cos_scalar_tables.inc>
#include <qor_core/_heap/_qor_dhyp_tables.inc>
#include <qor_core/_heap/_qor_reduce_pio2_tables.inc>
#include <qor_core/_heap/_qor_shyp_tables.inc>
#include <qor_core/_heap/_qor_sin_piece_tables.inc>
#include <qor_core/_heap/_qor_sin_scalar_tables.inc>
#include <qor_core/_heap/_qor_sincos_scalar_tables.inc>
#include <qor_core/_heap/_qor_tan_scalar_tables.inc>
#include <qor_core/exp/qor_a6_dexp_tables.inc>
#include <qor_core/exp/qor_a6_sexp_tables.inc>
#include <qor_core/ln/qor_a6_dln_tables.inc>
#include <qor_core/ln/qor_a6_sln_tables.inc>
#include <qor_core/log10/qor_a6_dlog10_tables.inc>
#include <qor_core/sincos/qor_a6_dsincos_tables.inc>
#include <qor_core/tanh/qor_a6_dtanh_tables.inc>

static_assert(hasPattern(expTabFine[0], 0x3FFA, 0xE35846B8A818FBD6));
static_assert(hasPattern(expTabFine[1], 0x3FFA, 0xE35ABD117FE8D4D7));
static_assert(expTabMid[0] == 1 && expTabCoarse[0] == 1);
static_assert(hasPattern(expTabFloat[0], 0x3FCEBFBA4E02D234));
static_assert(hasPattern(expTabFloat[1], 0x3FCF1571FBC72371));
static_assert(hasPattern(expTabFloat[32], 0x3FD5BE26EE4D4407));
static_assert(hasPattern(expTabFloat[63], 0x3FDE6AEF00C2C5BD));

static_assert(hasPattern(lnTabD[1][0], 0x3F6FF00AA2B10BC0));
static_assert(hasPattern(lnTabD[1][1], 0x3C02821AD5A6D350));
static_assert(hasPattern(lnTabD[255][0], 0x3FE61E3EFDA46466));
static_assert(hasPattern(lnTabD10[1][0], 0x3F5BBD9E9482AF08));
static_assert(hasPattern(lnTabS[128][2], 0xBFE54726CCE4EAAB));
static_assert(hasPattern(lnTabS[255][0], 0xBFF23E33D5D8385E));

static_assert(hypTabFine[0] == 1 && hypTabMid[0] == 1 && hypTabCoarse[0] == 1);
static_assert(ldPow2Table[32] == hypTabCoarse[16]);

static_assert(_dSinTab[1][0] == -0.004815273327803114 &&
              _dSinTab[1][1] == 0.0980171403295606 &&
              _dSinTab[1][2] == -1.6345824060817233e-18 && _dSinTab[1][3] == 1.0);
static_assert(_dSinTab[8][0] == 0.20710678118654752 &&
              _dSinTab[8][2] == -4.833646783938113e-17 && _dSinTab[8][3] == 0.5);
static_assert(hasPattern(_dSinTab[16][3], 0x8000000000000000));
static_assert(_dTanTab[6].tanLead == 1 && _dTanTab[7].tanLead == 2 &&
              _dTanTab[9].tanLead == 0 && _dTanTab[9].tanPoleFlag == 1 &&
              _dTanTab[23].mask == 0xFFFFFFF800000000 && _dTanTab[24].mask == 0);
static_assert(hasPattern(_qorReductionTab[7], 0x3E64442D18469899) &&
              hasPattern(_qorReductionTab[13], 0x3A61701B839A2520) &&
              hasPattern(_qorReductionTab[18], 0x3A845C06E0E68948) &&
              hasPattern(_qorReductionTab[21], 0x4C745F3060000000));
static_assert(sinPieceT4[0] == -2.5051823200351557e-08 &&
              sinPieceT0[64] == -0.16666665171049472 &&
              sinPieceT4[64] == -2.3110163778536015e-08);
static_assert(sinCosS3[0] == 2.7557301060236224e-06 &&
              sinCosC3[0] == -2.755680352867429e-07);

TEST(Tables, ThreeCopiesOfTheSineRows) {
    EXPECT_EQ(std::memcmp(_dSinTab, _dCosTab, sizeof _dSinTab), 0);
    EXPECT_EQ(std::memcmp(_dSinTab, _dSinCosTab, sizeof _dSinTab), 0);
}

} // namespace
