@ The inner loops of both stages for ARMv4, called by loops.cpp. They compute what band_by_band.cpp and
@ bass_by_stage.cpp compute, two frames a round: the new output of a resonator takes the place of the
@ older one, so that the two change roles without being moved.
    .syntax unified
    .arch armv4
    .arm
    .text

@ r0 frame, r1 end, r4 -c0, r5 c1, r6 c2, r7 gain. The two channels take turns, so that one's
@ product is ready when it is needed.
    .macro band_frame first, newer_l, newer_r, older_l, older_r
    ldmia   r0!, {r2, r3}                   @ input minus input two frames back
    mul     r12, r2, r5
    mul     lr, r3, r5
    mla     r12, \newer_l, r6, r12
    mla     lr, \newer_r, r6, lr
    mla     r12, \older_l, r4, r12
    mla     lr, \older_r, r4, lr
    mov     \older_l, r12, asr #14
    mov     \older_r, lr, asr #14
    .if \first
    smull   r2, r3, \older_l, r7
    smull   r12, lr, \older_r, r7
    .else
    ldmia   r0, {r2, r3, r12, lr}           @ the sums
    smlal   r2, r3, \older_l, r7
    smlal   r12, lr, \older_r, r7
    .endif
    stmia   r0!, {r2, r3, r12, lr}
    .endm

    .macro band_loop name, first
    .section .text.\name, "ax", %progbits
    .global \name
    .type   \name, %function
\name:
    stmfd   sp!, {r0, r4-r11, lr}
    ldmia   r0, {r4-r11}                    @ numbers, newer outputs, older outputs
    mov     r0, r1
    mov     r1, r2
1:  band_frame \first, r8, r9, r10, r11
    band_frame \first, r10, r11, r8, r9
    cmp     r0, r1
    bne     1b
    ldr     r0, [sp], #4
    add     r0, r0, #16
    stmia   r0, {r8-r11}
    ldmfd   sp!, {r4-r11, pc}
    .size   \name, . - \name
    .endm

    band_loop KelvoStartSums, 1
    band_loop KelvoAddToSums, 0

@ A resonator in Q28. `in` holds the input minus the input two frames back.
@ r4 -c0, r5 c1, r6 c2, r7 gain; the amplified output comes as lr << 4 | r12 >> 28.
    .macro resonate in, newer, older
    smull   r12, lr, r5, \in
    smlal   r12, lr, \older, r4
    smlal   r12, lr, \newer, r6
    mov     \older, r12, lsr #28
    orr     \older, \older, lr, lsl #4
    smull   r12, lr, \older, r7
    .endm

@ r1 samples, r2 the stage's outputs.
    .macro first_stage_frame older_in, newer, older
    ldrsh   r0, [r1], #4
    rsb     \older_in, \older_in, r0, lsl #11
    resonate \older_in, \newer, \older
    mov     \older_in, r0, lsl #11
    mov     r12, r12, lsr #28
    orr     r12, r12, lr, lsl #4
    str     r12, [r2], #4
    .endm

@ r1 samples, r2 the first stage's outputs.
    .macro second_stage_frame older_in, newer, older
    ldr     r0, [r2], #4
    rsb     \older_in, \older_in, r0
    resonate \older_in, \newer, \older
    mov     \older_in, r0
    add     r0, r0, r12, lsr #28
    ldrsh   r12, [r1]
    add     r0, r0, lr, lsl #4
    add     r0, r0, r12, lsl #11
    mov     r12, r0, asr #31
    teq     r12, r0, asr #27
    moveq   r0, r0, asr #12
    eorne   r0, r12, #0x7F00
    eorne   r0, r0, #0xFF
    strh    r0, [r1], #4
    .endm

    .macro stage_loop name, frame
    .section .text.\name, "ax", %progbits
    .global \name
    .type   \name, %function
\name:
    stmfd   sp!, {r0, r4-r11, lr}
    ldmia   r0, {r4-r11}                    @ numbers, newer and older input, newer and older output
1:  \frame  r9, r10, r11
    \frame  r8, r11, r10
    cmp     r2, r3
    bne     1b
    ldr     r0, [sp], #4
    add     r0, r0, #16
    stmia   r0, {r8-r11}
    ldmfd   sp!, {r4-r11, pc}
    .size   \name, . - \name
    .endm

    stage_loop KelvoBassFirstStage, first_stage_frame
    stage_loop KelvoBassSecondStage, second_stage_frame
