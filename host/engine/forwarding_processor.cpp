#include "engine/forwarding_processor.h"

namespace pdfhost::engine {
namespace {

template <auto Member, typename... Args>
void Forward(fz_context* ctx, pdf_processor* proc, Args... args) {
    pdf_processor* next = NextOf(proc);
    if (next->*Member)
        (next->*Member)(ctx, next, args...);
}

template <typename... Args>
using Operator = void (*)(fz_context*, pdf_processor*, Args...);

template <auto Member, typename... Args>
void Install(pdf_processor* proc, Operator<Args...> pdf_processor::*) {
    proc->*Member = &Forward<Member, Args...>;
}

#define PDFHOST_FORWARD(op) Install<&pdf_processor::op>(proc, &pdf_processor::op)

void InstallForwarders(pdf_processor* proc) {
    PDFHOST_FORWARD(op_w);
    PDFHOST_FORWARD(op_j);
    PDFHOST_FORWARD(op_J);
    PDFHOST_FORWARD(op_M);
    PDFHOST_FORWARD(op_d);
    PDFHOST_FORWARD(op_ri);
    PDFHOST_FORWARD(op_i);
    PDFHOST_FORWARD(op_gs_begin);
    PDFHOST_FORWARD(op_gs_BM);
    PDFHOST_FORWARD(op_gs_ca);
    PDFHOST_FORWARD(op_gs_CA);
    PDFHOST_FORWARD(op_gs_SMask);
    PDFHOST_FORWARD(op_gs_end);
    PDFHOST_FORWARD(op_q);
    PDFHOST_FORWARD(op_Q);
    PDFHOST_FORWARD(op_cm);
    PDFHOST_FORWARD(op_m);
    PDFHOST_FORWARD(op_l);
    PDFHOST_FORWARD(op_c);
    PDFHOST_FORWARD(op_v);
    PDFHOST_FORWARD(op_y);
    PDFHOST_FORWARD(op_h);
    PDFHOST_FORWARD(op_re);
    PDFHOST_FORWARD(op_S);
    PDFHOST_FORWARD(op_s);
    PDFHOST_FORWARD(op_F);
    PDFHOST_FORWARD(op_f);
    PDFHOST_FORWARD(op_fstar);
    PDFHOST_FORWARD(op_B);
    PDFHOST_FORWARD(op_Bstar);
    PDFHOST_FORWARD(op_b);
    PDFHOST_FORWARD(op_bstar);
    PDFHOST_FORWARD(op_n);
    PDFHOST_FORWARD(op_W);
    PDFHOST_FORWARD(op_Wstar);
    PDFHOST_FORWARD(op_BT);
    PDFHOST_FORWARD(op_ET);
    PDFHOST_FORWARD(op_Tc);
    PDFHOST_FORWARD(op_Tw);
    PDFHOST_FORWARD(op_Tz);
    PDFHOST_FORWARD(op_TL);
    PDFHOST_FORWARD(op_Tf);
    PDFHOST_FORWARD(op_Tr);
    PDFHOST_FORWARD(op_Ts);
    PDFHOST_FORWARD(op_Td);
    PDFHOST_FORWARD(op_TD);
    PDFHOST_FORWARD(op_Tm);
    PDFHOST_FORWARD(op_Tstar);
    PDFHOST_FORWARD(op_TJ);
    PDFHOST_FORWARD(op_Tj);
    PDFHOST_FORWARD(op_squote);
    PDFHOST_FORWARD(op_dquote);
    PDFHOST_FORWARD(op_d0);
    PDFHOST_FORWARD(op_d1);
    PDFHOST_FORWARD(op_CS);
    PDFHOST_FORWARD(op_cs);
    PDFHOST_FORWARD(op_SC_pattern);
    PDFHOST_FORWARD(op_sc_pattern);
    PDFHOST_FORWARD(op_SC_shade);
    PDFHOST_FORWARD(op_sc_shade);
    PDFHOST_FORWARD(op_SC_color);
    PDFHOST_FORWARD(op_sc_color);
    PDFHOST_FORWARD(op_G);
    PDFHOST_FORWARD(op_g);
    PDFHOST_FORWARD(op_RG);
    PDFHOST_FORWARD(op_rg);
    PDFHOST_FORWARD(op_K);
    PDFHOST_FORWARD(op_k);
    PDFHOST_FORWARD(op_BI);
    PDFHOST_FORWARD(op_sh);
    PDFHOST_FORWARD(op_Do_image);
    PDFHOST_FORWARD(op_Do_form);
    PDFHOST_FORWARD(op_MP);
    PDFHOST_FORWARD(op_DP);
    PDFHOST_FORWARD(op_BMC);
    PDFHOST_FORWARD(op_BDC);
    PDFHOST_FORWARD(op_EMC);
    PDFHOST_FORWARD(op_BX);
    PDFHOST_FORWARD(op_EX);
    PDFHOST_FORWARD(op_gs_OP);
    PDFHOST_FORWARD(op_gs_op);
    PDFHOST_FORWARD(op_gs_OPM);
    PDFHOST_FORWARD(op_gs_UseBlackPtComp);
    PDFHOST_FORWARD(op_END);
}

#undef PDFHOST_FORWARD

}  // namespace

ForwardingProcessor* NewForwardingProcessor(fz_context* ctx, std::size_t size,
                                            pdf_processor* next) {
    if (size < sizeof(ForwardingProcessor))
        size = sizeof(ForwardingProcessor);
    auto* made = static_cast<ForwardingProcessor*>(pdf_new_processor(ctx, static_cast<int>(size)));
    made->next = next;
    made->super.usage = next->usage;
    InstallForwarders(&made->super);
    return made;
}

}  // namespace pdfhost::engine
