<CsoundSynthesizer>
; "Skovra": 128 beats a minute, 4/4, D minor, 17 bars. A bar is 1.875 s, so
; bar 9 (the drop) starts at 15 s and bar 17 (the end) at 30 s.
; Render: csound -o skovra.wav synchtune.csd; `content/build` does it and
; cuts off the master's lookahead, which is silent.
<CsOptions>
-d -m0 -W -3
</CsOptions>
<CsInstruments>
sr     = 44100
ksmps  = 16
nchnls = 2
0dbfs  = 1
seed 2006

giStep      = 60 / 128 / 4          ; a sixteenth, seconds
giLookahead = 132 / sr              ; `content/build` trims as many frames

; Busses: Music and Low are pressed down by every kick, Drums is not. Low is one
; channel: what is deep stands in the middle. The sends feed the delay and the reverb.
gaMusicL, gaMusicR, gaDrumsL, gaDrumsR, gaLow init 0
gaDelayL, gaDelayR, gaRoomL, gaRoomR   init 0
gkDuck init 1                       ; level of the Music and Low busses, 0..1

giSine ftgen 0, 0, 16384, 10, 1

; Adds a stereo signal to the Music bus and its sends.
opcode Music, 0, aaii
  aLeft, aRight, iDelay, iRoom xin
  gaMusicL += aLeft
  gaMusicR += aRight
  gaDelayL += aLeft * iDelay
  gaDelayR += aRight * iDelay
  gaRoomL  += aLeft * iRoom
  gaRoomR  += aRight * iRoom
endop

; Adds a mono signal to the Drums bus, placed from 0 (left) to 1 (right).
opcode Drums, 0, aii
  aSignal, iPlace, iRoom xin
  aLeft, aRight pan2 aSignal, iPlace
  gaDrumsL += aLeft
  gaDrumsR += aRight
  gaRoomL  += aLeft * iRoom
  gaRoomR  += aRight * iRoom
endop

; Noise and six squares out of tune with each other, like struck metal.
opcode Metal, a, i
  iPitch xin
  a1 vco2 .2, iPitch, 10
  a2 vco2 .2, iPitch * 1.342, 10
  a3 vco2 .2, iPitch * 1.547, 10
  a4 vco2 .2, iPitch * 1.792, 10
  a5 vco2 .2, iPitch * 2.127, 10
  a6 vco2 .2, iPitch * 2.639, 10
  aNoise noise .6, 0
  xout a1 + a2 + a3 + a4 + a5 + a6 + aNoise
endop

; --- patterns -------------------------------------------------------------

; A bar of sixteenths for a drum: X loud, x medium, o soft, - rest.
; p4 instrument, p5 pattern, p6 and p7 handed on to it
instr Grid
  SDrum    strget p4
  SPattern strget p5
  iAt = 0
  while iAt < strlen(SPattern) do
    iChar strchar SPattern, iAt
    iLevel = iChar == 88 ? 1 : (iChar == 120 ? .7 : (iChar == 111 ? .4 : 0))
    if iLevel > 0 then
      event_i "i", SDrum, iAt * giStep, 1, iLevel * p6, p7
    endif
    iAt += 1
  od
endin

; A bar of sixteenths for a tuned instrument: digits are tones of a chord.
; p4 instrument, p5 pattern, p6 chord, p7 transposition, p8 level,
; p9 length in sixteenths, p10 handed on
instr Riff
  SVoice   strget p4
  SPattern strget p5
  iAt = 0
  while iAt < strlen(SPattern) do
    iTone strchar SPattern, iAt
    if iTone >= 48 && iTone <= 55 then
      iNote table iTone - 48, p6
      event_i "i", SVoice, iAt * giStep, p9 * giStep, iNote + p7, p8, p10
    endif
    iAt += 1
  od
endin

; The lower tones of a chord together.
; p4 instrument, p5 chord, p6 transposition, p7 level, p8 tones, p9 handed on
instr Chord
  SVoice strget p4
  iAt = 0
  while iAt < p8 do
    iNote table iAt, p5
    event_i "i", SVoice, 0, p3, iNote + p6, p7, p9
    iAt += 1
  od
endin

; --- drums: p4 level ------------------------------------------------------

instr Kick
  p3 = .40
  aDrop  expon 1, .034, .36788
  aSnap  expon 1, .011, .36788
  aPitch = 50 + 130 * aDrop + 420 * aSnap
  aBody  transeg 1, .030, 0, .45, .19, -1.2, .16, .16, -3, 0
  aTone  poscil aBody, aPitch, giSine
  aPunch expon 1, .030, .36788
  aKnock poscil aPunch, 150 + 1.5 * aPitch, giSine
  aNoise noise 1, 0
  aSkin  butterbp aNoise, 300, 320
  aBeat  butterhp aNoise, 2600
  aTick  expon 1, .0035, .36788
  aOut   = tanh(1.45 * aTone + .75 * aKnock + 3.2 * aSkin * aPunch) * .375 + .56 * aBeat * aTick
  Drums aOut * p4, .5, 0
  gkDuck linseg 1, .003, 1 - .88 * p4, .055, 1 - .78 * p4, .19, 1
endin

; p5 pitch of the drum
instr Snare
  p3 = .5
  iPitch = p5 > 0 ? p5 : 186
  aBody  expon 1, .07, .36788
  aWires expon 1, .11, .36788
  aFall  expon 1, .02, .36788
  aTone  poscil .35 * aBody, iPitch * (1 + .8 * aFall), giSine
  aNoise noise 1, 0
  aLow   butterbp aNoise, 1900, 2200
  aHigh  butterhp aNoise, 5200
  aOut = tanh(aTone + aWires * (.55 * aLow + .34 * aHigh)) * p4 * 2.2
  Drums aOut, .5, .22
endin

instr Clap
  p3 = .6
  aNoise noise 1, 0
  aHands transeg 1, .009, -3, .15, 0, 0, 1, .009, -3, .15, 0, 0, 1, .01, -3, .2, 0, 0, 1, .3, -8, 0
  aLow   butterbp aNoise, 1300, 900
  aHigh  butterhp aNoise, 4200
  aOut = aHands * (1.1 * aLow + .3 * aHigh) * p4 * 2.3
  Drums aOut, .54, .30
endin

; p5 place
instr Hat
  p3 = .25
  aMetal Metal 420
  aOut   butterhp aMetal, 7200
  aFade  expon 1, .042, .36788
  Drums aOut * aFade * p4 * .54, p5, .03
endin

instr OpenHat
  p3 = .7
  aMetal Metal 400
  aOut   butterhp aMetal, 6400
  aFade  expon 1, .12, .36788
  aRise  linseg 0, .002, 1, p3, 1
  Drums aOut * aFade * aRise * p4 * .52, p5, .06
endin

instr Shaker
  p3 = .2
  aNoise noise 1, 0
  aOut   butterhp aNoise, 6000
  aFade  transeg 0, .025, 2, 1, .09, -4, 0
  Drums aOut * aFade * p4 * .30, p5, .04
endin

instr Crash
  p3 = 3
  aMetalL Metal 310
  aMetalR Metal 327
  aLeft  butterhp aMetalL, 3600
  aRight butterhp aMetalR, 3600
  aFade  transeg 1, .04, -2, .6, 2.9, -5, 0
  Drums aLeft * aFade * p4 * .22, .15, .15
  Drums aRight * aFade * p4 * .22, .85, .15
endin

; p5 pitch
instr Tom
  p3 = .5
  aFall expon 1, .05, .36788
  aFade expon 1, .10, .36788
  aTone poscil aFade, p5 * (1 + .9 * aFall), giSine
  aSkin noise .4, 0
  aSkin butterbp aSkin, p5 * 6, p5 * 5
  aOut = tanh(1.2 * (aTone + aSkin * aFade * aFall)) * p4 * .27
  Drums aOut, .3 + .4 * (p5 - 90) / 120, .25
endin

; Noise that climbs for the whole of p3.
instr Riser
  aNoiseL noise 1, 0
  aNoiseR noise 1, 0
  kCutoff expseg 500, p3, 11000
  kWidth  = kCutoff * .7
  aLeft   butterbp aNoiseL, kCutoff, kWidth
  aRight  butterbp aNoiseR, kCutoff, kWidth
  aSwell  transeg 0, p3 - .02, 2.5, 1, .02, 0, 0
  Music aLeft * aSwell * p4, aRight * aSwell * p4, 0, .3
endin

; Wind in the firs: high noise that swells over p3 and flutters in eighths.
; p4 level, p5 where it starts and p6 where it ends, Hz
instr Air
  aNoiseL noise 1, 0
  aNoiseR noise 1, 0
  kCutoff expseg p5, p3, p6
  aLeft   butterbp aNoiseL, kCutoff, kCutoff * .8
  aRight  butterbp aNoiseR, kCutoff * 1.1, kCutoff * .8
  aSwell  transeg .25, p3 * .85, 1.5, 1, p3 * .15, -2, .1
  kPhase  phasor 1 / (giStep * 2), .5
  kFlutter = .35 + .65 * (1 - kPhase) ^ 2
  aFlutter interp kFlutter
  Music aLeft * aSwell * aFlutter * p4, aRight * aSwell * aFlutter * p4, 0, .12
endin

; --- tuned: p4 note (MIDI), p5 level ---------------------------------------

; p6 opening of the filter, 0..1
instr Bass
  iPitch cpsmidinn p4
  aSaw1  vco2 .5, iPitch * 1.004
  aSaw2  vco2 .5, iPitch * .996
  aSub   poscil .50, iPitch, giSine
  kOpen  expseg 1, .16, .25, p3, .2
  kCutoff = 130 + (500 + 2600 * p6) * kOpen
  aOut   zdf_ladder aSaw1 + aSaw2, kCutoff, 2.2
  aGrit  butterhp tanh(3 * aOut), 260
  aFade  linsegr 0, .003, 1, .02, .85, p3, .8, .04, 0
  gaLow += (.18 * aOut + .46 * aGrit + aSub) * aFade * p5
  aWide  delay aGrit * aFade * p5 * .34, .007
  Music aWide, -aWide, 0, 0
endin

; Five saws a side; p6 cutoff at the start, Hz (it ends at twice that)
instr Pad
  iPitch cpsmidinn p4
  kDrift1 poscil .0016, .31, giSine
  kDrift2 poscil .0016, .23, giSine, .5
  a1 vco2 .3, iPitch * (1.0000 + kDrift1), 0, .5, .1
  a2 vco2 .3, iPitch * (1.0065 - kDrift1), 0, .5, .3
  a3 vco2 .3, iPitch * (0.9931 + kDrift2), 0, .5, .7
  a4 vco2 .3, iPitch * (1.0118 - kDrift2), 0, .5, .2
  a5 vco2 .3, iPitch * (0.9887 + kDrift1), 0, .5, .9
  kCutoff expseg p6, p3, p6 * 2, 1, p6 * 2
  aLeft   zdf_2pole a1 + a2 + .6 * a5, kCutoff, .6
  aRight  zdf_2pole a1 + a3 + .6 * a4, kCutoff, .6
  aLeft   butterhp aLeft, 400
  aRight  butterhp aRight, 400
  aFade   linsegr 0, .03, .7, .3, 1, p3, 1, .35, 0
  Music aLeft * aFade * p5 * 1.3, aRight * aFade * p5 * 1.3, 0, .25
endin

; A short bright chord tone; p6 cutoff, Hz
instr Stab
  iPitch cpsmidinn p4
  a1 vco2 .4, iPitch * 1.004
  a2 vco2 .4, iPitch * .996
  a3 vco2 .4, iPitch * 1.011
  a4 vco2 .4, iPitch * .989
  kOpen  expon 1, .12, .36788
  kCutoff = 300 + p6 * kOpen
  aLeft  zdf_ladder a1 + .7 * a4, kCutoff, 1.5
  aRight zdf_ladder a2 + .7 * a3, kCutoff, 1.5
  aLeft  butterhp aLeft, 560
  aRight butterhp aRight, 560
  aFade  linsegr 0, .002, 1, .12, .6, .15, .3, .08, 0
  Music aLeft * aFade * p5 * 2.6, aRight * aFade * p5 * 2.6, .12, .18
endin

; A plucked saw for running figures; p6 brightness, Hz
instr Arp
  iPitch cpsmidinn p4
  iSide  = frac(p4 * .381)
  a1 vco2 .5, iPitch * 1.003
  a2 vco2 .5, iPitch * .997, 2, .3
  kOpen  expon 1, .07, .36788
  kCutoff = 250 + p6 * kOpen
  aOut   zdf_ladder a1 + a2, kCutoff, 3
  aFade  linsegr 0, .002, 1, .1, .45, .2, .1, .05, 0
  aLeft, aRight pan2 aOut * aFade * p5 * 2.1, .2 + .6 * iSide
  Music aLeft, aRight, .30, .15
endin

; Frequency modulation: struck glass.
instr Bell
  iPitch cpsmidinn p4
  p3 = p3 + 1.4
  aFade  expon 1, p3, .003
  aStrike expon 1, .05, .36788
  aRing  expon 1, .5, .36788
  aMod1  poscil iPitch * 3.5 * (.45 * aRing + 1.1 * aStrike), iPitch * 3.5, giSine
  aMod2  poscil iPitch * 2 * aRing * .9, iPitch * 2.003, giSine
  aLeft  poscil aFade, iPitch * 1.001 + aMod1 + aMod2, giSine
  aRight poscil aFade, iPitch * .999 + aMod1 - aMod2, giSine
  aEdge  linseg 0, .002, 1, p3 - .05, 1, .048, 0
  Music aLeft * aEdge * p5 * .76, aRight * aEdge * p5 * .76, .42, .30
endin

; The tune. p6: the note it slides in from, 0 for none
instr Lead
  iPitch cpsmidinn p4
  iFrom  cpsmidinn p6 > 0 ? p6 : p4
  kSlide expseg iFrom, .045, iPitch, 1, iPitch
  kDepth linseg 0, .16, 0, .2, .006, 1, .006
  kVibrato poscil kDepth, 5.6, giSine
  kPitch = kSlide * (1 + kVibrato)
  a1 vco2 .35, kPitch
  a2 vco2 .35, kPitch * 1.0072
  a3 vco2 .35, kPitch * .9928
  a4 vco2 .30, kPitch * .5, 2, .38
  kCutoff expseg 3000, .03, 9500, .3, 6500, 2, 4500
  aLeft  zdf_2pole a1 + a2 + .8 * a4, kCutoff, .8
  aRight zdf_2pole a1 + a3 + .8 * a4, kCutoff, .8
  aLeft  butterhp aLeft, 640
  aRight butterhp aRight, 640
  aFade  linsegr 0, .006, 1, .15, .8, p3, .75, .09, 0
  Music aLeft * aFade * p5 * 1.35, aRight * aFade * p5 * 1.35, .26, .22
endin

; --- effects and master, always on ------------------------------------------

; Echoes that cross from side to side, a dotted eighth apart.
instr Delay
  aFromL, aFromR init 0
  aInL   butterhp gaDelayL, 350
  aInR   butterhp gaDelayR, 350
  aLeft  delay aInL + .42 * aFromR, giStep * 3
  aRight delay aInR * .6 + .55 * aFromL, giStep * 3
  aFromL butterlp aLeft, 6500
  aFromR butterlp aRight, 6500
  gaMusicL += aFromL
  gaMusicR += aFromR
  gaRoomL  += aFromL * .2
  gaRoomR  += aFromR * .2
  clear gaDelayL, gaDelayR
endin

instr Room
  aInL butterhp gaRoomL, 260
  aInR butterhp gaRoomR, 260
  aLeft, aRight reverbsc aInL, aInR, .80, 11000
  kDuck = .4 + .6 * gkDuck
  gaDrumsL += aLeft * kDuck * .8
  gaDrumsR += aRight * kDuck * .8
  clear gaRoomL, gaRoomR
endin

; Sum, with presence and a little saturation on the music and air on all; the
; limiter (it looks ahead, so that it never clips); the last fade.
; p4: level
instr Master
  kDuck portk gkDuck, .003
  aDuck interp kDuck
  aMusicL pareq gaMusicL, 700, .62, .707, 1
  aMusicR pareq gaMusicR, 700, .62, .707, 1
  aMusicL pareq aMusicL, 2900, 1.45, .5
  aMusicR pareq aMusicR, 2900, 1.45, .5
  aLow    = tanh(1.5 * gaLow) * aDuck * .51
  aMusicL pareq tanh(2.7 * aMusicL) * aDuck * 1.03, 1000, .63, .6
  aMusicR pareq tanh(2.7 * aMusicR) * aDuck * 1.03, 1000, .63, .6
  aLeft  = gaDrumsL + aMusicL + aLow
  aRight = gaDrumsR + aMusicR + aLow
  clear gaDrumsL, gaDrumsR, gaMusicL, gaMusicR, gaLow
  aLeft  butterhp aLeft, 26
  aRight butterhp aRight, 26
  aLeft  pareq aLeft, 9000, .76, .707, 2
  aRight pareq aRight, 9000, .76, .707, 2
  iCeiling = .755
  aLeft  = iCeiling * 1.25 * tanh(aLeft * p4 / (iCeiling * 1.25))
  aRight = iCeiling * 1.25 * tanh(aRight * p4 / (iCeiling * 1.25))
  aPeak  max abs(aLeft), abs(aRight)
  kPeak  max_k aPeak, 1, 1
  kWant  = iCeiling / max(kPeak, iCeiling)
  kGain  init 1
  kHold  init 0
  if kWant <= kGain then
    kGain = kWant
    kHold = giLookahead * 2
  elseif kHold > 0 then
    kHold -= 1 / kr
  else
    kGain += (kWant - kGain) * (1 - exp(-1 / (kr * .06)))
  endif
  kSmooth portk kGain, giLookahead / 5, 1
  aGain  interp kSmooth
  aLeft  delay aLeft, giLookahead
  aRight delay aRight, giLookahead
  aFade  transeg 1, 31.4, 0, 1, 1.5, -2.5, 0, 10, 0, 0
  aLeft  = aLeft * aGain * aFade
  aRight = aRight * aGain * aFade
  aLeft  limit aLeft, -iCeiling, iCeiling
  aRight limit aRight, -iCeiling, iCeiling
  outs aLeft, aRight
endin
</CsInstruments>
<CsScore>
t 0 128

; chords (MIDI notes, rising)
f 11 0 8 -2  62 65 69 72 74 77 81 84   ; D minor 7
f 12 0 8 -2  58 62 65 69 74 77 81 82   ; B flat major 7
f 13 0 8 -2  60 65 69 72 76 77 81 84   ; F major 7
f 14 0 8 -2  60 64 67 72 74 76 79 84   ; C
f 15 0 8 -2  58 62 67 70 74 77 79 82   ; G minor
f 16 0 8 -2  57 62 64 69 74 76 81 86   ; A, fourth held
f 17 0 8 -2  57 61 64 69 73 76 79 81   ; A
f 18 0 8 -2  62 64 69 74 76 81 86 88   ; D, ninth, no third

i "Delay"  0 76
i "Room"   0 76
i "Master" 0 76  1.19

; ===== bars 1 to 8: intro and build =========================================
b 0   ; bar 1
i "Crash" 0 4 .5
i "Grid"  0 4 "Kick"    "X---X---X---X---" 1
i "Grid"  0 4 "Shaker"  "o-x-o-x-o-x-o-xo" 1.5 .4
i "Grid"  0 4 "OpenHat" "------X-------X-" .6 .6
i "Air"   0 8 .12 5200 9500
i "Chord" 0 8 "Pad" 11  0 .10 4 700
i "Riff"  0 4 "Bell" "4-----2-----3---"  11 0 .15 3 0
i "Riff"  0 4 "Bass" "0-------------0-"  11 -24 .16 5 .1
b 4   ; bar 2
i "Grid"  0 4 "Kick"    "X---X---X---X--x" 1
i "Grid"  0 4 "Shaker"  "o-xoo-xoo-xoo-xx" 1.6 .6
i "Grid"  0 4 "OpenHat" "--X---X---X---X-" .6 .4
i "Riff"  0 4 "Bell" "5-----4---2-3-4-"  11 0 .13 3 0
i "Riff"  0 4 "Bass" "0-----0-------0-"  11 -24 .16 4 .15
b 8   ; bar 3
i "Grid"  0 4 "Kick"    "X---X---X---X---" 1
i "Grid"  0 4 "OpenHat" "--X---X---X---X-" .8 .55
i "Grid"  0 4 "Shaker"  "xoxoxoxoxoxoxoxo" 1 .35
i "Chord" 0 8 "Pad" 12  0 .10 4 1000
i "Riff"  0 4 "Arp"  "0-1-2-1-3-2-1-2-"  12 0 .10 1 700
i "Riff"  0 4 "Bell" "6-----4-----5---"  12 0 .12 3 0
i "Riff"  0 4 "Bass" "--0---0---0---0-"  12 -24 .19 1.5 .3
b 12  ; bar 4
i "Grid"  0 4 "Kick"    "X---X---X---X-x-" 1
i "Grid"  0 4 "OpenHat" "--X---X---X---X-" .8 .55
i "Grid"  0 4 "Shaker"  "xoxoxoxoxoxoxxxx" 1 .65
i "Riff"  0 4 "Arp"  "0-1-2-1-3-4-3-2-"  12 0 .10 1 1100
i "Riff"  0 4 "Bell" "5---4---3---1-2-"  12 0 .12 3 0
i "Riff"  0 4 "Bass" "--0---0---0--00-"  12 -24 .19 1.5 .35
b 16  ; bar 5: the tune is heard from afar
i "Crash" 0 4 .5
i "Grid"  0 4 "Kick"    "X---X---X---X---" 1
i "Grid"  0 4 "Clap"    "----X-------X---" .8
i "Grid"  0 4 "OpenHat" "--X---X---X---X-" .9 .55
i "Grid"  0 4 "Hat"     "x-o-x-o-x-o-x-o-" .8 .35
i "Chord" 0 8 "Pad" 15  0 .08 4 1000
i "Riff"  0 4 "Arp"  "0123210123432123"  15 0 .10 1 1400
i "Riff"  0 4 "Bass" "--22--2---22--2-"  15 -36 .19 .8 .4
i "Bell"  0   1.5 74 .16
i "Bell"  1.5 .5  77 .14
i "Bell"  2   1.5 82 .16
i "Bell"  3.5 .5  81 .13
b 20  ; bar 6
i "Grid"  0 4 "Kick"    "X---X---X---X-x-" 1
i "Grid"  0 4 "Clap"    "----X-------X--o" .8
i "Grid"  0 4 "OpenHat" "--X---X---X---X-" .9 .55
i "Grid"  0 4 "Hat"     "x-oox-oox-oox-oo" .8 .65
i "Riff"  0 4 "Arp"  "1234321234543234"  15 0 .10 1 1900
i "Riff"  0 4 "Bass" "--22--2---22-522"  15 -36 .19 .8 .45
i "Bell"  0   1.5 79 .16
i "Bell"  1.5 .5  77 .14
i "Bell"  2   .5  74 .15
i "Bell"  2.5 1.5 70 .15
b 24  ; bar 7: the climb
i "Grid"  0 4 "Kick"    "X---X---X---X---" .9
i "Grid"  0 4 "Clap"    "----X-------X---" .8
i "Grid"  0 4 "OpenHat" "--X---X---X---X-" .9 .55
i "Grid"  0 4 "Snare"   "o---o---o-o-o-o-" .6
i "Chord" 0 4 "Pad" 16  0 .085 4 1500
i "Riff"  0 4 "Arp"  "2345432345654345"  16 0 .10 1 2600
i "Riff"  0 4 "Bass" "0-0-0-0-0-0-0-0-"  16 -24 .15 .8 .5
i "Riser" 0 7.2 .055
i "Bell"  0   2   74 .16
i "Bell"  2   2   76 .16
b 28  ; bar 8: no kick, then a held breath
i "Grid"  0 4 "Snare"   "ooooooooxxxx----" .5
i "Grid"  0 4 "OpenHat" "--X---X---------" .9 .55
i "Grid"  0 4 "Hat"     "o-o-o-o-oooo----" .7 .4
i "Chord" 0 3 "Pad" 17  0 .085 4 2200
i "Riff"  0 4 "Arp"  "345645674567----"  17 0 .085 1 3600
i "Bell"  0   2   76 .16
i "Bell"  2   1   73 .16
i "Tom"   3    .5 .8 180
i "Tom"   3.25 .5 .8 150
i "Tom"   3.5  .5 .9 120
i "Tom"   3.75 .5 .9 100

; ===== bars 9 to 16: the drop ===============================================
b 32  ; bar 9
i "Crash" 0 4 1.3
i "Grid"  0 4 "Kick"    "X---X---X---X---" 1
i "Grid"  0 4 "Clap"    "----X-------X---" 1
i "Grid"  0 4 "OpenHat" "--X---X---X---X-" 1 .55
i "Grid"  0 4 "Hat"     "x-oxx-oxx-oxx-ox" .9 .35
i "Chord" 0 4 "Pad" 11  0 .085 4 4600
i "Riff"  0 4 "Bass" "--0--000--00-040"  11 -24 .23 .8 .7
i "Chord" 0    .5 "Stab" 11 0 .09 4 5000
i "Chord" .75  .2 "Stab" 11 0 .055 4 5600
i "Chord" 1.5  .5 "Stab" 11 0 .09 4 5000
i "Lead"  0    .75 74 .17 69
i "Lead"  .75  .75 77 .17 0
i "Lead"  1.5  1   81 .18 77
i "Lead"  2.5  .5  79 .16 0
i "Lead"  3    .5  77 .16 0
i "Lead"  3.5  .5  76 .16 0
b 36  ; bar 10
i "Grid"  0 4 "Kick"    "X---X---X---X---" 1
i "Grid"  0 4 "Clap"    "----X-------X---" 1
i "Grid"  0 4 "OpenHat" "--X---X---X---X-" 1 .55
i "Grid"  0 4 "Hat"     "x-oxx-oxx-oxxxox" .9 .65
i "Chord" 0 4 "Pad" 12  0 .085 4 4200
i "Riff"  0 4 "Bass" "--00-000--00-020"  12 -24 .23 .8 .7
i "Chord" 0    .5 "Stab" 12 0 .09 4 5000
i "Chord" .75  .2 "Stab" 12 0 .09 4 5000
i "Chord" 2.5  .5 "Stab" 12 0 .09 4 5000
i "Lead"  0    .75 77 .17 76
i "Lead"  .75  .75 74 .17 0
i "Lead"  1.5  1.5 70 .17 74
i "Lead"  3    .5  72 .16 0
i "Lead"  3.5  .5  74 .16 0
b 40  ; bar 11
i "Grid"  0 4 "Kick"    "X---X---X---X---" 1
i "Grid"  0 4 "Clap"    "----X-------X---" 1
i "Grid"  0 4 "OpenHat" "--X---X---X---X-" 1 .55
i "Grid"  0 4 "Hat"     "x-oxx-oxx-oxx-ox" .9 .35
i "Chord" 0 4 "Pad" 13  0 .07 4 5200
i "Riff"  0 4 "Bass" "--11-111--11-131"  13 -36 .23 .8 .7
i "Chord" 0    .5 "Stab" 13 0 .09 4 5600
i "Chord" .75  .2 "Stab" 13 0 .055 4 6800
i "Chord" 1.5  .5 "Stab" 13 0 .09 4 5600
i "Lead"  0    .75 72 .17 74
i "Lead"  .75  .75 77 .17 0
i "Lead"  1.5  1   81 .18 77
i "Lead"  2.5  .5  82 .17 81
i "Lead"  3    .5  81 .16 0
i "Lead"  3.5  .5  79 .16 0
b 44  ; bar 12
i "Grid"  0 4 "Kick"    "X---X---X---X-x-" 1
i "Grid"  0 4 "Clap"    "----X-------X-oo" 1
i "Grid"  0 4 "OpenHat" "--X---X---X---X-" 1 .55
i "Grid"  0 4 "Hat"     "x-oxx-oxxxoxxxox" .9 .65
i "Chord" 0 4 "Pad" 14  0 .085 4 4800
i "Riff"  0 4 "Bass" "--0--000--00-020"  14 -24 .23 .8 .75
i "Chord" 0    .5 "Stab" 14 0 .09 4 5600
i "Chord" .75  .2 "Stab" 14 0 .065 4 6800
i "Chord" 2.5  .5 "Stab" 14 0 .09 4 5600
i "Lead"  0    1.5 79 .17 81
i "Lead"  1.5  1   76 .17 79
i "Lead"  2.5  .5  77 .16 0
i "Lead"  3    .5  79 .16 0
i "Lead"  3.5  .5  84 .17 0
i "Tom"   3.5  .5 .6 150
i "Tom"   3.75 .5 .45 110
b 48  ; bar 13: the answer, higher, over a broken beat
i "Crash" 0 4 .8
i "Grid"  0 4 "Kick"    "X---X--XX---X---" 1
i "Grid"  0 4 "Snare"   "----X--o-o--X---" .9 0
i "Grid"  0 4 "OpenHat" "--X---X---X---X-" 1 .55
i "Grid"  0 4 "Shaker"  "xxxxxxxxxxxxxxxx" 1 .35
i "Chord" 0 4 "Pad" 11  0 .085 4 5400
i "Riff"  0 4 "Arp"  "4567654345676543"  11 0 .085 1 5200
i "Riff"  0 4 "Bass" "--00-00---04-003"  11 -24 .23 .8 .8
i "Lead"  0    .75 86 .18 84
i "Lead"  .75  .75 84 .17 0
i "Lead"  1.5  1   81 .18 0
i "Lead"  2.5  .5  79 .16 0
i "Lead"  3    .5  81 .17 79
i "Lead"  3.5  .5  77 .16 0
i "Lead"  0    .75 81 .08 0
i "Lead"  .75  .75 77 .08 0
i "Lead"  1.5  1   77 .08 0
i "Lead"  2.5  .5  76 .08 0
i "Lead"  3    1   74 .08 0
b 52  ; bar 14
i "Grid"  0 4 "Kick"    "X---X--XX---X---" 1
i "Grid"  0 4 "Snare"   "----X--o-o--X--o" .9 0
i "Grid"  0 4 "OpenHat" "--X---X---X---X-" 1 .55
i "Grid"  0 4 "Shaker"  "xxxxxxxxxxxxxxxx" 1 .65
i "Chord" 0 4 "Pad" 12  0 .085 4 5400
i "Riff"  0 4 "Arp"  "3456543234565432"  12 0 .085 1 5200
i "Riff"  0 4 "Bass" "--00-0----03-02-"  12 -24 .23 .8 .8
i "Lead"  0    .75 77 .17 79
i "Lead"  .75  .75 74 .17 0
i "Lead"  1.5  1.5 77 .17 74
i "Lead"  3    .5  79 .16 0
i "Lead"  3.5  .5  81 .17 0
i "Lead"  0    .75 74 .08 0
i "Lead"  .75  .75 70 .08 0
i "Lead"  1.5  1.5 74 .08 0
i "Lead"  3    1   77 .08 0
b 56  ; bar 15
i "Grid"  0 4 "Kick"    "X---X---X---X-x-" 1
i "Grid"  0 4 "Clap"    "----X-------X---" 1
i "Grid"  0 4 "Snare"   "------o--o----oo" .6 0
i "Grid"  0 4 "OpenHat" "--X---X---X---X-" 1 .55
i "Grid"  0 4 "Hat"     "xoxoxoxoxoxoxoxo" .9 .4
i "Chord" 0 4 "Pad" 15  0 .085 4 5600
i "Riff"  0 4 "Arp"  "4-5-6-7-6-5-4-5-"  15 0 .09 2 5600
i "Riff"  0 4 "Bass" "2-22-22---22-532"  15 -36 .21 .8 .85
i "Riser" 0 7.2 .06
i "Lead"  0    .75 82 .18 81
i "Lead"  .75  .75 81 .17 0
i "Lead"  1.5  1   79 .17 0
i "Lead"  2.5  .5  77 .16 0
i "Lead"  3    .5  76 .16 0
i "Lead"  3.5  .5  74 .16 0
b 60  ; bar 16: the leading note, then a stop
i "Grid"  0 4 "Kick"    "X---X---X-------" 1
i "Grid"  0 4 "Snare"   "----X---o-x-xxX-" .9 0
i "Grid"  0 4 "OpenHat" "--X---X---X-----" 1 .55
i "Grid"  0 4 "Hat"     "xoxoxoxoxxxxxxx-" .9 .6
i "Chord" 0 2 "Pad" 16  0 .085 4 5600
i "Chord" 2 1.5 "Pad" 17  0 .085 4 6000
i "Riff"  0 4 "Arp"  "4-5-6-7-4567456-"  17 0 .09 1 6000
i "Riff"  0 4 "Bass" "0-00-00-0-0-0---"  17 -24 .21 .8 .9
i "Lead"  0    1.5 76 .17 74
i "Lead"  1.5  1   74 .17 76
i "Lead"  2.5  .5  73 .17 0
i "Lead"  3    .5  76 .17 0
i "Lead"  3.5  .25 81 .18 76

; ===== bar 17: the end ======================================================
b 64
i "Crash" 0 4 1
i "Grid"  0 4 "Kick"    "X-------X-------" 1
i "Snare" 0 1 .7
i "Grid"  0 4 "OpenHat" "--X---X-X-------" .8 .55
i "Chord" 0 2.2 "Pad" 18 -12 .07 6 4000
i "Chord" 0 1 "Stab" 18 0 .09 5 4600
i "Bass"  0 1.6 38 .20 .5
i "Lead"  0 1.9 74 .17 73
i "Bell"  0    .75 74 .16
i "Bell"  .75  .75 77 .15
i "Bell"  1.5  .5  81 .15
i "Crash" 2 4 .5
i "Bass"  2 .5 38 .20 .5
i "Chord" 2 .5 "Stab" 18 0 .10 6 4600
i "Bell"  2 1 86 .17
i "Bell"  2.75 .5 81 .13
i "Bell"  3.25 .5 77 .12
i "Bell"  3.75 .5 74 .12
i "Bell"  4.25 .5 69 .11
e
</CsScore>
</CsoundSynthesizer>
