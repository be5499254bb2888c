#!/usr/bin/env python3
"""Writes data/sample/dict_source.txt, the sample dictionary source (GBK).

The entries are the word list data/sample/words.txt (word, pronunciation,
meaning) with irregular forms added, and the entries written out below with
explanations, samples, phrases, word roots and related words. Build it with
    tqcomm dict build data/sample/dict_source.txt -o DIR
"""
import os

HERE = os.path.dirname(os.path.abspath(__file__))
SAMPLE = os.path.join(HERE, "..", "data", "sample")

IRREGULAR = {
    "begin": "began,begun", "bring": "brought", "build": "built", "buy": "bought",
    "child": "children", "choose": "chose,chosen", "drink": "drank,drunk",
    "forget": "forgot,forgotten", "arrive": "", "agree": "",
}

# word, pronunciation, meaning, explanation, samples, phrases, forms, root, related
ENTRIES = [
    ("run", "rʌn", "v. 跑；经营；运转\\nn. 跑步", "to move quickly on foot\\nto manage a business",
     "He runs every morning.\\nShe runs a small shop.", "run into 偶遇\\nrun out of 用完", "ran,run", "", "jog,sprint#walk"),
    ("study", "'stʌdi", "v. 学习；研究\\nn. 书房", "to spend time learning about a subject",
     "She studies English every day.\\nI study in the library.", "case study 个案研究", "", "studium (拉丁语) 热心", "learn,read#"),
    ("big", "big", "adj. 大的；重要的", "large in size or amount", "That is a big house.\\nIt was a big mistake.",
     "big deal 了不起的事", "", "", "large,huge#small,little"),
    ("stop", "stɔp", "v. 停止；阻止\\nn. 车站", "to end a movement or an action", "The bus stopped at the corner.",
     "bus stop 公共汽车站", "", "", "halt,end#start,go"),
    ("like", "laik", "v. 喜欢\\nprep. 像", "to enjoy something or find it pleasant", "I like green tea.\\nShe looks like her mother.",
     "would like 想要", "", "", "enjoy,love#dislike,hate"),
    ("make", "meik", "v. 做；制造；使", "to produce something", "He made a cake for her birthday.",
     "make up 编造\\nmake sure 确保", "made", "", "create,produce#"),
    ("nice", "nais", "adj. 好的；友好的", "pleasant or kind", "What a nice day!\\nShe is nice to everyone.", "", "", "", "pleasant,kind#nasty"),
    ("need", "ni:d", "v. 需要\\nn. 需要", "to require something", "I need your help.", "in need 在困难中", "", "", "require#"),
    ("go", "gəu", "v. 去；走", "to move from one place to another", "Let's go home.\\nShe went to Beijing last year.",
     "go on 继续\\ngo out 出去", "went,gone,goes", "", "leave#come,stay"),
    ("see", "si:", "v. 看见；明白", "to notice with the eyes", "I saw a bird in the tree.\\nI see what you mean.",
     "see off 送行", "saw,seen", "", "look,watch#"),
    ("take", "teik", "v. 拿；带走；花费", "to get something into your hands", "Take an umbrella with you.",
     "take off 起飞；脱下\\ntake care 小心", "took,taken", "", "get,carry#give"),
    ("eat", "i:t", "v. 吃", "to put food into the mouth and swallow it", "We eat rice every day.", "eat out 在外吃饭", "ate,eaten", "", "dine#"),
    ("write", "rait", "v. 写", "to put words on paper", "Please write your name here.", "write down 写下", "wrote,written", "", "#read"),
    ("speak", "spi:k", "v. 说；讲", "to say words aloud", "Can you speak Chinese?", "speak up 大声说", "spoke,spoken", "", "talk,say#"),
    ("swim", "swim", "v. 游泳", "to move through water", "They swim in the lake in summer.", "", "swam,swum", "", "#"),
    ("sing", "siŋ", "v. 唱歌", "to make music with the voice", "She sang a song for us.", "", "sang,sung", "", "#"),
    ("give", "giv", "v. 给", "to let someone have something", "He gave me a book.", "give up 放弃", "gave,given", "", "offer#take"),
    ("know", "nəu", "v. 知道；认识", "to have information in the mind", "I know the answer.", "", "knew,known", "", "understand#"),
    ("think", "θiŋk", "v. 想；认为", "to use the mind", "I think it will rain.", "think of 想起", "thought", "", "believe#"),
    ("sleep", "sli:p", "v. 睡觉\\nn. 睡眠", "to rest with the eyes closed", "The baby is sleeping.", "go to sleep 入睡", "slept", "", "rest#wake"),
    ("teach", "ti:tʃ", "v. 教", "to help someone learn", "She teaches maths at a school.", "", "taught", "", "#learn"),
    ("watch", "wɔtʃ", "v. 观看\\nn. 手表", "to look at something for some time", "We watched a film last night.", "watch out 小心", "", "", "look,see#"),
    ("wash", "wɔʃ", "v. 洗", "to clean with water", "Wash your hands before dinner.", "", "", "", "clean#"),
    ("box", "bɔks", "n. 盒子", "a container with flat sides", "Put the toys in the box.", "", "", "", "case#"),
    ("bus", "bʌs", "n. 公共汽车", "a large vehicle that carries passengers", "I go to school by bus.", "", "", "", "#"),
    ("try", "trai", "v. 尝试；努力", "to make an effort", "Try again.\\nHe tried hard.", "try on 试穿", "", "", "attempt#"),
    ("cry", "krai", "v. 哭；喊", "to have tears coming from the eyes", "The baby cried all night.", "", "", "", "weep#laugh"),
    ("carry", "'kæri", "v. 携带；搬运", "to hold and take somewhere", "He carried the bag upstairs.", "", "", "", "bring#"),
    ("hope", "həup", "v. & n. 希望", "to want something to happen", "I hope you feel better soon.", "", "", "", "wish#despair"),
    ("love", "lʌv", "v. & n. 爱", "to like someone very much", "I love my family.", "fall in love 爱上", "", "", "adore#hate"),
    ("live", "liv", "v. 生活；居住", "to have your home somewhere", "They live in Shanghai.", "", "", "", "dwell#die"),
    ("move", "mu:v", "v. 移动；搬家", "to change place", "We moved to a new flat.", "", "", "", "shift#stay"),
    ("use", "ju:z", "v. 使用\\nn. 用途", "to do something with a thing", "May I use your phone?", "used to 过去常常", "", "", "#"),
    ("hot", "hɔt", "adj. 热的", "having a high temperature", "It is very hot today.", "", "", "", "warm#cold"),
    ("fat", "fæt", "adj. 胖的\\nn. 脂肪", "having too much flesh", "The cat is getting fat.", "", "", "", "#thin"),
    ("sad", "sæd", "adj. 悲伤的", "unhappy", "She felt sad when he left.", "", "", "", "unhappy#happy,glad"),
    ("wet", "wet", "adj. 湿的", "covered with water", "My shoes are wet.", "", "", "", "damp#dry"),
    ("small", "smɔ:l", "adj. 小的", "little in size", "a small town", "", "", "", "little#big,large"),
    ("large", "la:dʒ", "adj. 大的", "big in size", "a large family", "", "", "", "big#small"),
    ("fast", "fa:st", "adj. 快的\\nadv. 快地", "moving quickly", "He is a fast runner.", "", "", "", "quick#slow"),
    ("slow", "sləu", "adj. 慢的", "not fast", "The old bus is very slow.", "", "", "", "#fast,quick"),
    ("tall", "tɔ:l", "adj. 高的", "of great height", "My brother is tall.", "", "", "", "high#short"),
    ("short", "ʃɔ:t", "adj. 短的；矮的", "not long", "a short story", "", "", "", "brief#long,tall"),
    ("long", "lɔŋ", "adj. 长的\\nadv. 长久地", "measuring a great distance", "a long road", "as long as 只要", "", "", "#short"),
    ("old", "əuld", "adj. 老的；旧的", "having lived for many years", "an old man\\nan old book", "", "", "", "aged#young,new"),
    ("young", "jʌŋ", "adj. 年轻的", "not old", "She is young and clever.", "", "", "", "#old"),
    ("new", "nju:", "adj. 新的", "recently made", "I bought a new bike.", "", "", "", "fresh#old"),
    ("good", "gud", "adj. 好的", "of high quality", "a good idea", "be good at 擅长", "better,best", "", "fine#bad"),
    ("bad", "bæd", "adj. 坏的", "of low quality", "bad weather", "", "worse,worst", "", "poor#good"),
    ("warm", "wɔ:m", "adj. 温暖的", "a little hot", "a warm coat", "", "", "", "#cool"),
    ("light", "lait", "n. 光；灯\\nadj. 轻的", "the brightness from the sun or a lamp", "Turn on the light, please.", "", "", "", "lamp#dark,heavy"),
    ("dark", "da:k", "adj. 黑暗的", "with little or no light", "It gets dark early in winter.", "", "", "", "#light,bright"),
    ("open", "'əupən", "v. 打开\\nadj. 开着的", "to move something so it is not closed", "Open the window, please.", "", "", "", "#close,shut"),
    ("help", "help", "v. & n. 帮助", "to make it easier for someone to do something", "Can you help me?", "help yourself 请自便", "", "", "aid#"),
    ("play", "plei", "v. 玩；演奏\\nn. 戏剧", "to do things for fun", "The children play in the park.", "play the piano 弹钢琴", "", "", "#work"),
    ("work", "wə:k", "v. 工作\\nn. 工作", "to do a job", "My father works in a bank.", "at work 在工作", "", "", "labour#play,rest"),
    ("walk", "wɔ:k", "v. 步行\\nn. 散步", "to move on foot", "We walked to the park.", "take a walk 散步", "", "", "#run"),
    ("talk", "tɔ:k", "v. 说话\\nn. 谈话", "to say things to someone", "They talked for hours.", "talk about 谈论", "", "", "speak#"),
    ("jump", "dʒʌmp", "v. 跳", "to push yourself into the air", "The cat jumped onto the table.", "", "", "", "leap#"),
    ("plan", "plæn", "n. 计划\\nv. 计划", "an idea of what to do", "We planned a trip to the sea.", "", "", "", "scheme#"),
    ("shop", "ʃɔp", "n. 商店\\nv. 购物", "a place where things are sold", "She shopped for a new dress.", "", "", "", "store#"),
    ("drop", "drɔp", "v. 落下\\nn. 滴", "to let something fall", "He dropped his keys.", "", "", "", "fall#"),
    ("travel", "'trævl", "v. & n. 旅行", "to go from place to place", "They travelled around China.", "", "", "", "journey#"),
    ("ride", "raid", "v. 骑；乘", "to sit on and control a bike or horse", "She rides her bike to school.", "", "rode,ridden", "", "#"),
    ("save", "seiv", "v. 救；节省", "to keep from harm", "The doctor saved his life.", "", "", "", "rescue#waste"),
    ("smile", "smail", "v. & n. 微笑", "to make a happy face", "She smiled at me.", "", "", "", "grin#frown"),
    ("party", "'pa:ti", "n. 聚会；政党", "a meeting of people for fun", "We had a party on Friday.", "", "", "", "#"),
    ("story", "'stɔ:ri", "n. 故事", "an account of events", "Tell me a story.", "", "", "", "tale#"),
    ("lady", "'leidi", "n. 女士", "a polite word for a woman", "Ladies and gentlemen!", "", "", "", "woman#gentleman"),
    ("day", "dei", "n. 天；白天", "a period of 24 hours", "I saw her the other day.", "", "", "", "#night"),
    ("key", "ki:", "n. 钥匙；关键", "a piece of metal that opens a lock", "I lost my key.", "", "", "", "#"),
    ("toy", "tɔi", "n. 玩具", "a thing for a child to play with", "a toy car", "", "", "", "#"),
    ("man", "mæn", "n. 男人", "an adult male person", "a tall man", "", "men", "", "#woman"),
    ("woman", "'wumən", "n. 女人", "an adult female person", "a young woman", "", "women", "", "lady#man"),
    ("foot", "fut", "n. 脚", "the part of the leg you stand on", "My foot hurts.", "on foot 步行", "feet", "", "#"),
    ("tooth", "tu:θ", "n. 牙齿", "one of the hard white things in the mouth", "Brush your teeth.", "", "teeth", "", "#"),
    ("mouse", "maus", "n. 老鼠；鼠标", "a small animal with a long tail", "The cat caught a mouse.", "", "mice", "", "#"),
    ("knife", "naif", "n. 刀", "a tool for cutting", "a sharp knife", "", "knives", "", "#"),
    ("leaf", "li:f", "n. 叶子", "a flat green part of a plant", "The leaves turn red in autumn.", "", "leaves", "", "#"),
    ("house", "haus", "n. 房子", "a building to live in", "They live in a big house.", "", "", "", "home#"),
    ("horse", "hɔ:s", "n. 马", "a large animal that people ride", "He rides a horse.", "", "", "", "#"),
    ("church", "tʃə:tʃ", "n. 教堂", "a building for Christian worship", "They go to church on Sunday.", "", "", "", "#"),
    ("dish", "diʃ", "n. 盘子；菜肴", "a plate or bowl; food prepared in a way", "a dish of rice", "", "", "", "plate#"),
    ("glass", "gla:s", "n. 玻璃；玻璃杯", "a hard clear material", "a glass of water", "", "", "", "#"),
    ("class", "kla:s", "n. 班级；课", "a group of students", "Our class has forty students.", "", "", "", "#"),
    ("fox", "fɔks", "n. 狐狸", "a wild animal like a dog with red fur", "The fox ran into the wood.", "", "", "", "#"),
    ("potato", "pə'teitəu", "n. 土豆", "a round vegetable that grows underground", "I like potatoes.", "", "potatoes", "", "#"),
    ("tomato", "tə'ma:təu", "n. 西红柿", "a soft red fruit eaten as a vegetable", "tomato soup", "", "tomatoes", "", "#"),
    ("student", "'stju:dnt", "n. 学生", "a person who studies", "She is a student at the university.", "", "", "stud- 学习 + -ent 人", "pupil#teacher"),
    ("studio", "'stju:diəu", "n. 工作室；演播室", "a room where an artist works", "a film studio", "", "", "", "#"),
    ("teacher", "'ti:tʃə", "n. 教师", "a person who teaches", "Our teacher is very kind.", "", "", "teach 教 + -er 人", "#student"),
    ("reader", "'ri:də", "n. 读者", "a person who reads", "a book for young readers", "", "", "read 读 + -er 人", "#writer"),
    ("read", "ri:d", "v. 读", "to look at words and understand them", "I read a book every week.", "", "read", "", "#write"),
    ("learn", "lə:n", "v. 学习", "to get knowledge of something", "We learn English at school.", "", "learnt,learned", "", "study#teach"),
    ("school", "sku:l", "n. 学校", "a place where children learn", "The school is near my home.", "", "", "", "#"),
    ("water", "'wɔ:tə", "n. 水", "the clear liquid in rivers and rain", "a glass of water", "", "", "", "#"),
    ("rain", "rein", "n. 雨\\nv. 下雨", "water falling from clouds", "It rained all day.", "", "", "", "#"),
    ("snow", "snəu", "n. 雪\\nv. 下雪", "soft white pieces of frozen water", "The snow is deep.", "", "", "", "#"),
    ("wind", "wind", "n. 风", "air moving fast", "The wind is strong today.", "", "", "", "breeze#"),
    ("sun", "sʌn", "n. 太阳", "the star that gives the earth light", "The sun rises in the east.", "", "", "", "#moon"),
    ("moon", "mu:n", "n. 月亮", "the round thing in the sky at night", "The moon is bright tonight.", "", "", "", "#sun"),
    ("star", "sta:", "n. 星星；明星", "a small point of light in the night sky", "a film star", "", "", "", "#"),
    ("sea", "si:", "n. 海", "the salt water that covers much of the earth", "We swam in the sea.", "", "", "", "ocean#land"),
    ("river", "'rivə", "n. 河", "a long natural stream of water", "the Yellow River", "", "", "", "stream#"),
    ("mountain", "'mauntin", "n. 山", "a very high hill", "They climbed the mountain.", "", "", "", "hill#"),
    ("tree", "tri:", "n. 树", "a tall plant with a trunk", "an apple tree", "", "", "", "#"),
    ("grass", "gra:s", "n. 草", "a common green plant", "Keep off the grass.", "", "", "", "#"),
    ("dog", "dɔg", "n. 狗", "an animal kept as a pet", "The dog barked.", "", "", "", "#cat"),
    ("cat", "kæt", "n. 猫", "a small furry animal kept as a pet", "The cat sat on the mat.", "", "", "", "#dog"),
    ("fish", "fiʃ", "n. 鱼\\nv. 钓鱼", "an animal that lives in water", "We had fish for dinner.", "", "fish,fishes", "", "#"),
    ("sheep", "ʃi:p", "n. 羊", "a farm animal kept for its wool", "a flock of sheep", "", "sheep", "", "#"),
]

EXPRESSIONS = [
    ("look after", "", "照顾", "She looks after her little brother."),
    ("look for", "", "寻找", "I am looking for my keys."),
    ("give up", "", "放弃", "Never give up!"),
    ("take off", "", "起飞；脱下", "The plane took off at six.\\nTake off your coat."),
    ("get up", "", "起床", "I get up at seven every day."),
    ("put on", "", "穿上", "Put on your coat, it is cold."),
    ("turn on", "", "打开（电器）", "Turn on the light, please."),
    ("turn off", "", "关掉（电器）", "Turn off the TV."),
    ("find out", "", "查明；发现", "Find out when the train leaves."),
    ("come back", "", "回来", "Come back soon!"),
    ("go on", "", "继续", "Go on, I am listening."),
    ("make up", "", "编造；组成", "He made up a story."),
    ("run out of", "", "用完", "We have run out of milk."),
    ("look forward to", "", "盼望", "I look forward to seeing you."),
    ("be good at", "", "擅长", "She is good at maths."),
    ("a lot of", "", "许多", "There are a lot of people here."),
    ("at once", "", "立刻", "Come here at once."),
    ("by the way", "", "顺便说一下", "By the way, where is Tom?"),
    ("in front of", "", "在……前面", "There is a tree in front of the house."),
    ("on time", "", "准时", "The train arrived on time."),
    ("take care", "", "小心；保重", "Take care on the road."),
    ("wait for", "", "等待", "Wait for me at the gate."),
    ("agree with", "", "同意（某人）", "I agree with you."),
    ("deal with", "", "处理", "How do you deal with stress?"),
    ("grow up", "", "长大", "She grew up in the country."),
]


# Pronunciations in the plain letters of the word list.
PLAIN = {"ʌ": "A", "ə": "e", "æ": "ae", "ɔ": "o", "θ": "th", "ʃ": "sh", "ŋ": "ng", "ʒ": "z"}


def plain_pron(pron):
    for k, v in PLAIN.items():
        pron = pron.replace(k, v)
    return pron


def read_word_list():
    with open(os.path.join(SAMPLE, "words.txt"), "rb") as f:
        lines = [l.decode("gbk").strip() for l in f if l.strip()]
    out = []
    for head, meaning in zip(lines[0::2], lines[1::2]):
        word, _, pron = head.partition(" [")
        out.append((word.strip(), pron.rstrip("]"), meaning))
    return out


def main():
    own = {e[0] for e in ENTRIES}
    rows = ["# Sample dictionary source: word, pronunciation, meaning, explanation, samples,",
            "# phrases, word forms, word root, related words (tab-separated, GBK)."]
    for word, pron, meaning in read_word_list():
        if word in own:
            continue
        rows.append("\t".join([word, pron, meaning, "", "", "", IRREGULAR.get(word, ""), "", ""]))
    for e in ENTRIES:
        rows.append("\t".join([e[0], plain_pron(e[1])] + list(e[2:])))
    for expr, pron, meaning, sample in EXPRESSIONS:
        rows.append("\t".join([expr, pron, meaning, "", sample, "", "", "", ""]))
    with open(os.path.join(SAMPLE, "dict_source.txt"), "wb") as f:
        for r in rows:
            f.write(r.encode("gbk", errors="strict") + b"\r\n")
    print(len(rows) - 2, "entries")


if __name__ == "__main__":
    main()
