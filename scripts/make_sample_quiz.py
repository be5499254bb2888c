#!/usr/bin/python3
"""Writes the sample question banks of data/quiz/ (GBK text).

grammar.txt  choice questions in the suite's question text
fill.txt     fill-blank questions, one a line, answers in brackets
usage.txt    a usage test: a count, then a question and three marked options

The questions are our own. Every choice question starts with "$" rather
than its number: a number's leading digits 1 to 9 are dropped from the stem
but a 0 is not, so "10." would leave "0. " in front of question ten.
Run it to change the banks; the files are committed.
"""
import os
import sys

OUT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "data", "quiz")

# stem, options, answer letter, difficulty, class letters, knowledge code,
# comment (Chinese, one line; "" for none)
CHOICE = [
    ("He _______ to school every day.", ["go", "goes", "going", "gone"], "B", 1, "g", "01.101",
     "一般现在时，主语为第三人称单数，动词加 -s。"),
    ("They _______ football when it started to rain.", ["play", "played", "were playing", "have played"], "C", 2, "g",
     "01.205", "过去进行时表示过去某一时刻正在进行的动作。"),
    ("I have lived here _______ 2015.", ["for", "since", "from", "in"], "B", 1, "g", "02.110",
     "since 后接时间点，for 后接时间段。"),
    ("She is _______ honest girl.", ["a", "an", "the", "/"], "B", 1, "g", "03.001", "honest 以元音音素开头，用 an。"),
    ("If it _______ tomorrow, we will stay at home.", ["rain", "rains", "will rain", "rained"], "B", 2, "g", "04.310",
     "条件状语从句用一般现在时表示将来。"),
    ("This is the book _______ I bought yesterday.", ["who", "whom", "which", "whose"], "C", 2, "g", "05.120",
     "先行词是物，关系代词用 which 或 that。"),
    ("The meeting was put _______ because of the storm.", ["off", "on", "up", "out"], "A", 3, "x", "06.210",
     "put off 推迟。"),
    ("Neither Tom nor his parents _______ at home.", ["is", "are", "was", "has been"], "B", 3, "g", "07.030",
     "neither...nor 连接主语时，谓语与最近的主语一致。"),
    ("Please _______ the light when you leave.", ["turn on", "turn off", "turn up", "turn down"], "B", 1, "x",
     "06.105", "turn off 关掉。"),
    ("The coffee is too hot _______.", ["to drink", "drinking", "drink", "to drink it"], "A", 2, "g", "08.040",
     "too...to 结构中，不定式的宾语就是主语，不再加 it。"),
    ("By the time we arrived, the film _______.", ["began", "has begun", "had begun", "begins"], "C", 3, "g",
     "01.330", "过去完成时：过去某时之前已完成。"),
    ("He asked me where _______.", ["do I live", "I lived", "did I live", "I live in"], "B", 3, "g", "09.015",
     "宾语从句用陈述语序，时态与主句一致。"),
    ("We are looking forward to _______ you again.", ["see", "seeing", "seen", "saw"], "B", 2, "g", "08.120",
     "look forward to 中的 to 是介词，后接动名词。"),
    ("There _______ a lot of people in the park last Sunday.", ["is", "are", "was", "were"], "D", 1, "g", "07.010",
     ""),
    ("The word \"borrow\" means _______.", ["借入", "借出", "归还", "购买"], "A", 1, "c", "10.001",
     "borrow 借入；lend 借出。"),
    ("\"Excuse me, is this seat taken?\" \"_______\"", ["Yes, please.", "No, go ahead.", "Thank you.", "Never mind."],
     "B", 2, "t", "11.020", "交际用语：座位没人，请坐。"),
    ("I'd rather you _______ anything about it for now.", ["don't say", "didn't say", "won't say", "not say"], "B", 4,
     "g", "04.520", "would rather 后的从句用过去时表示现在或将来的愿望。"),
    ("The bridge _______ next year.", ["will build", "will be built", "is building", "builds"], "B", 2, "g", "12.050",
     "被动语态的将来时：will be + 过去分词。"),
    ("It was in this room _______ the famous writer was born.", ["which", "where", "that", "when"], "C", 4, "g",
     "13.001", "强调句 It was...that...。"),
    ("Choose the word with a different stress: _______", ["record (n.)", "present (n.)", "begin", "notice"], "C", 3,
     "d", "14.101", "begin 重音在第二个音节，其余在第一个。"),
    ("Which word is closest in meaning to \"rapid\"?", ["slow", "quick", "calm", "rare"], "B", 1, "c", "10.999",
     "rapid 快速的 = quick。"),
    ("Tom is the _______ of the two brothers.", ["tall", "taller", "tallest", "more tall"], "B", 2, "g", "15.020",
     "两者比较用比较级，前加 the。"),
    ("_______ and _______ are both used in this dish.", ["salt, pepper", "salts, peppers", "the salt, the pepper"],
     "A", 2, "x", "10.310", "两个空格的题目，选项中用逗号分开两个答案。"),
    ("Hardly _______ home when the phone rang.", ["I had got", "had I got", "I got", "did I get"], "B", 5, "g",
     "16.001", "hardly 放在句首时，句子部分倒装。"),
]

FILL = [
    "He [goes] to school by bus every day.",
    "They [were] playing football when it started to rain.",
    "I have lived here [since] 2015.",
    "She [has] already [finished] her homework.",
    "If it [rains] tomorrow, we will stay at home.",
    "The meeting was put [off] because of the storm.",
    "We are looking forward to [seeing] you again.",
    "The bridge [will] [be] built next year.",
    "这本书是[借]来的，下周要还。",
    "Tom is the [taller] of the two brothers.",
    "Hardly [had] I got home when the phone rang.",
    "[Neither] Tom nor his parents [are] at home.",
]

USAGE = [
    ("He _______ to school every day.", ["go", "goes", "going"], 1),
    ("I have lived here _______ 2015.", ["for", "since", "at"], 1),
    ("The coffee is too hot _______.", ["to drink", "to drink it", "drinking"], 0),
    ("borrow 的意思是 _______", ["借入", "借出", "归还"], 0),
]


def choice_text():
    lines = ["// 墨岭英语语法：单项选择样题（本套件自编）", ""]
    for stem, options, answer, dgr, cls, kno, comment in CHOICE:
        lines.append("$ " + stem)
        for i, option in enumerate(options):
            lines.append("%s) %s" % ("ABCDE"[i], option))
        lines.append("#" + answer)
        lines.append("DGR %d" % dgr)
        lines.append("CLS " + cls)
        lines.append("KNO " + kno)
        if comment:
            lines.append("// " + comment)
        lines.append("")
    return lines


def usage_text():
    lines = [str(len(USAGE))]
    for question, options, right in USAGE:
        lines.append(question)
        lines.extend(("$" if i == right else "X") + o for i, o in enumerate(options))
    return lines


def write(name, lines):
    with open(os.path.join(OUT, name), "wb") as f:
        f.write(("\r\n".join(lines) + "\r\n").encode("gbk"))


def main():
    os.makedirs(OUT, exist_ok=True)
    write("grammar.txt", choice_text())
    write("fill.txt", FILL)  # no numbers: "10." would keep its "0"
    write("usage.txt", usage_text())
    return 0


if __name__ == "__main__":
    sys.exit(main())
